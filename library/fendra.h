// Convolution and deconvolution of sampled signals, for programs in C and C++.
//
// A handle holds options, and the result of its last run. Options are those of the command line
// (fendra convolve --help, fendra deconvolve --help), and signals stay in the caller's memory;
// samples, choices and records are the same bits that the command line gives.
//
// Threads. Handles are independent of each other: any number of them may work at once, in any
// threads. A handle is for one thread at a time, and may pass from one to another. While it runs,
// every other call on it, from the observer or from another thread, is refused: a call that returns
// a code returns FENDRA_BAD_ARGUMENT, and the others give what they give where there is no result.
// A run may start threads of its own (option "jobs"), which end with it.
//
// Lifetimes. What a call is given is read until it returns and kept by nobody: the library copies
// what it needs. Pointers that it gives are good until the call that is named with each. A handle
// that is null, or was closed, is refused as one that runs; a closed one is recognised until
// another handle has its address.
//
// Errors. Calls return one of the codes below, and fendra_message says in one line what is wrong
// and what to do. No call throws, prints, ends the process, or changes its locale, its signal
// handlers or the floating-point mode of the thread. One exception: fendra_record ends the process
// where the few kilobytes are not left that its JSON takes.
#ifndef FENDRA_H
#define FENDRA_H

#include <stddef.h>

#if defined(__GNUC__)
#define FENDRA_API __attribute__((visibility("default")))
#else
#define FENDRA_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

// What a call ends with. Later versions may add codes: whatever is not FENDRA_OK is a failure.
enum {
    FENDRA_OK = 0,
    // A handle, pointer, length, sample or option that cannot be used. The same again fails again.
    FENDRA_BAD_ARGUMENT = 1,
    FENDRA_NO_MEMORY = 2,
    FENDRA_STOPPED = 3,  // by the observer
    // The module cannot be opened, or there is no result to these signals with these options.
    FENDRA_FAILED = 4
};

typedef struct fendra fendra;

// The version of the library, as "2.00". Never null; good for ever. From any thread.
FENDRA_API const char* fendra_version(void);

// A new handle, without options. The caller closes it.
//   module    file of the module that computes; null: the one that is installed with the library
//   returns   null only where memory is exhausted. A module that cannot be opened gives a handle,
//             too: its runs end with FENDRA_FAILED, and fendra_message says why, at once as well.
FENDRA_API fendra* fendra_open(const char* module);

// Ends a handle and all pointers that it gave. Null, a closed handle and one that runs stay as they
// are.
FENDRA_API void fendra_close(fendra* handle);

// Sets an option for the runs that follow, in place of an earlier value of it.
//   option    word of the command line without dashes: "method", "max-iterations"
//   value     as the command line takes it; "" for options without a value, as "pad"; null takes
//             the option back
//   returns   FENDRA_OK
//             FENDRA_BAD_ARGUMENT: neither convolution nor deconvolution has the option, or its
//             value is refused
//             FENDRA_NO_MEMORY, FENDRA_FAILED
// An option that only one of convolution and deconvolution has plays no part in the other. An
// option is checked by itself; options that do not go together are refused by the run. After a
// failure all options are as before. The result stays as it is in any case.
FENDRA_API int fendra_set(fendra* handle, const char* option, const char* value);

// Who is told how far a run has come, in place of the one before; it serves all runs that follow.
//   tell      null: nobody. Else it is called every few milliseconds, and after each step of an
//             iteration, with the share of the work that is done, which rises from 0 to 1. Short
//             runs may not call it more than once. The run stops if it returns anything except 0,
//             and does not call it again. It may be called from a thread of the library, one call
//             at a time. It has to return, without an exception or a long jump, and cannot use the
//             handle.
//   with      passed on to it
FENDRA_API void fendra_observe(fendra* handle, int (*tell)(void* with, double share), void* with);

// Convolve a signal with a kernel; or take a known kernel out of a measured signal. Samples are
// finite, unless the option "allow-nonfinite" is set. A convolution is periodic with the length of
// the longer signal, and with "pad" linear, n + m - 1 samples.
//   signal    n samples, from 1
//   kernel    m samples, from 1
//   returns   FENDRA_OK: the result replaces that of the run before
//             FENDRA_BAD_ARGUMENT: also where options do not go together
//             FENDRA_NO_MEMORY
//             FENDRA_STOPPED
//             FENDRA_FAILED: also where the result would hold NaN or infinity
// After a failure there is no result, that of the run before neither.
FENDRA_API int fendra_convolve(fendra* handle, const double* signal, size_t n, const double* kernel,
                               size_t m);
FENDRA_API int fendra_deconvolve(fendra* handle, const double* signal, size_t n,
                                 const double* kernel, size_t m);

// The same on several channels: n samples of each, of which the first of all channels come first,
// then the second. A kernel of one channel serves all of the signal; else each has its own, or a
// signal of one channel serves all of the kernel's.
FENDRA_API int fendra_convolve_channels(fendra* handle, const double* signal, size_t n,
                                        size_t channels, const double* kernel, size_t m,
                                        size_t kernel_channels);
FENDRA_API int fendra_deconvolve_channels(fendra* handle, const double* signal, size_t n,
                                          size_t channels, const double* kernel, size_t m,
                                          size_t kernel_channels);

// Samples of the result in each channel, and channels; 0 where there is no result.
FENDRA_API size_t fendra_length(const fendra* handle);
FENDRA_API size_t fendra_channels(const fendra* handle);

// The samples of the result: fendra_length(handle) times fendra_channels(handle) values, channels
// side by side. Null where there is no result. Good until the next run of the handle, or its end.
FENDRA_API const double* fendra_result(const fendra* handle);

// The bounds of each value of the result (95 %), arranged like it and good as long. Options
// "uncertainty" and "auto" ask for them.
//   returns   FENDRA_OK: both are set, to null if the run was not asked for bounds
//             FENDRA_BAD_ARGUMENT: there is no result, or lower or upper is null. Nothing is set.
FENDRA_API int fendra_band(const fendra* handle, const double** lower, const double** upper);

// The record of the run: what was chosen and why, remarks on the result, digests, and the command
// line that gives the same; a JSON object in UTF-8, as fendra --json prints it. It is made when it
// is first asked for, and that may take as long as the run. Good until the next run of the handle,
// or its end. Never null: "" where there is no result, or the record could not be made, and
// fendra_message says why.
FENDRA_API const char* fendra_record(const fendra* handle);

// What went wrong in the last call of the handle that returns a code or a record, in UTF-8, one
// line; "" after success. Never null. Good until the next such call, or the end of the handle.
FENDRA_API const char* fendra_message(const fendra* handle);

#ifdef __cplusplus
}
#endif

#endif
