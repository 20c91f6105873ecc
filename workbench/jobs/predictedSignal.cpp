#include "workbench/jobs/predictedSignal.h"

#include "workbench/analysis/Spectrum.h"
#include "workbench/methods/Method.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

std::vector<double> predictedSignal(std::vector<double> result, std::vector<double> kernel,
                                    const RunRecord& record) {
    const std::size_t length = result.size();
    result.resize(length + (record.pad ? kernel.size() - 1 : 0));
    kernel.resize(std::min(kernel.size(), result.size()));
    std::vector<double> model = periodicConvolution(result, kernel);
    const std::int64_t early = record.stays
                                   ? std::ssize(model) - Method::selectedBy(record.settings)->lag
                               : record.moved ? record.moved->samples - record.moved->lag
                                              : 0;
    std::rotate(model.data(), model.data() + early % std::ssize(model),
                model.data() + model.size());
    model.resize(length);
    return model;
}
