#include "benchmarks/peers.h"

#include <Eigen/Core>

#if defined(__x86_64__)
const EigenJobs& eigenAvx2Jobs();
const EigenJobs& eigenAvx512Jobs();

std::vector<eigen::Build> eigen::builds() {
    std::vector<Build> all;
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma")) {
        all.push_back({"Eigen AVX2", eigenAvx2Jobs()});
    }
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") &&
        __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512bw")) {
        all.push_back({"Eigen AVX-512", eigenAvx512Jobs()});
    }
    return all;
}
#else
const EigenJobs& eigenJobs();

std::vector<eigen::Build> eigen::builds() {
    return {{"Eigen", eigenJobs()}};
}
#endif

std::string eigen::version() {
    return "Eigen " + std::to_string(EIGEN_WORLD_VERSION) + "." +
           std::to_string(EIGEN_MAJOR_VERSION) + "." + std::to_string(EIGEN_MINOR_VERSION);
}
