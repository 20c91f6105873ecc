// Asked for by the sanitizer of leaks, in a build that has it. What a library keeps of a broken file
// after it has refused it ends with the part.
extern "C" const char* __lsan_default_suppressions();  // NOLINT(bugprone-reserved-identifier)

const char* __lsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier)
    return "leak:libedf\nleak:libhdf5\nleak:libmatio\nleak:libmseed\nleak:libnetcdf\n";
}
