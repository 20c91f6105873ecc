// Asked for by the sanitizer of leaks, in a build that has it. What a library keeps of a broken
// file after it has refused it ends with the part.

// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming)
extern "C" const char* __lsan_default_suppressions();

const char* __lsan_default_suppressions() {
    return "leak:libedf\nleak:libhdf5\nleak:libmatio\nleak:libmseed\nleak:libnetcdf\n";
}
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)
