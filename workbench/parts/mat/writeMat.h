#pragma once

#include "workbench/signals/SignalReader.h"
#include "workbench/signals/SignalWriter.h"

#include <string>

// Writes all samples of a signal, and what is known of it, as variables of a MAT file of version 5,
// as MatFile has them. The library takes a variable as a whole, so the samples have to fit in
// memory. Failure if they do not, if they are more than such a variable can have, or if it would
// hold a single sample, which is read as a number or as one channel.
void writeMat(const std::string& path, SignalReader& samples, const SignalTarget& target,
              const ResultInfo& info);
