#include "workbench/system/ownProcess.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

// What is mapped already, which may be terabytes where memory is watched for errors.
static double mappedBytes() {
    double pages = 0.0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<double>(sysconf(_SC_PAGESIZE));
}

static void limit(__rlimit_resource resource, double most) {
    rlimit both = {};
    getrlimit(resource, &both);
    if (most < static_cast<double>(both.rlim_cur)) {
        both.rlim_cur = static_cast<rlim_t>(most);
        setrlimit(resource, &both);
    }
}

void limitProcess(double bytes, double seconds) {
    limit(RLIMIT_AS, mappedBytes() + bytes);
    limit(RLIMIT_CPU, seconds);
    limit(RLIMIT_CORE, 0.0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

void setOwnVariable(const char* name, const char* value) {
    setenv(name, value, 1);
}

std::string takeStandardOutput() {
    const int output = dup(STDOUT_FILENO);
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    close(nowhere);
    return "/proc/self/fd/" + std::to_string(output);
}
