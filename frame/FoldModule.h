#pragma once

#include "frame/FoldSettings.h"
#include "frame/Pass.h"
#include "host/B_BasisModule.h"

// The module object: two input signals are convolved, or the first is deconvolved by the second.
// Ports follow the settings:
//     direction  method  input 0   input 1  output 0     outputs 1 and 2
//     0          0, 1    first     second   convolved
//     1          1       measured  kernel   deconvolved
//     1          2       measured  kernel   deconvolved  last error, steps
//     1          3       measured  kernel   deconvolved  deviation of the zeros, of the one
// Signals are "DOUBLE[]" in "TIME_DOMAIN", the numbers "DOUBLE" in "SCALAR".
class FoldModule final : public B_BasisModule {
public:
    // Objects of the loaded library are numbered from 1, in the order of construction; no number is
    // used twice. Memory that runs out leaves by std::bad_alloc.
    FoldModule();

protected:
    // Overrides stand in the order of the base.
    int firstZeroQuery() override;
    void countPortUp(PORTTYPE side, int port) override;    // inputCounter, outputCounter
    void countPortDown(PORTTYPE side, int port) override;  // likewise
    int secondZeroQuery() override;
    void ignorePortEvent(std::uintptr_t first, std::uintptr_t second,
                         std::uintptr_t third) override;

public:
    // Runs the algorithm that the settings select on what waits on the inputs: per block on each
    // pair of blocks, blocks without a partner keep waiting; per packet once, on all blocks of each
    // port joined. A result is as long as the longer of its two signals, and NaN where the
    // algorithm could not write it. Only the last block written carries the marker 2.
    //   returns    0: done, also if no pair waits.
    //             -5: the method asks for signals of equal length.
    //             -1: the run failed, no such method, or memory exhausted.
    // A run that fails writes nothing to any output, and its blocks are gone from both inputs, so
    // that the next call finds them in step; earlier results stay. The thread's RunObserver is
    // asked after each step of the iteration and told of each run without a result.
    // Results are those of the standard arithmetic, whatever mode the host computes in; the host
    // has its mode back on return.
    int Process() override;

protected:
    void initToken() override;

    // The name in the user's language, in nameBuffer. A port that direction and method do not have
    // is reported by TCError with the code 100, and its name is empty.
    const char* getInportName(int port) override;
    const char* getOutportName(int port) override;

    int thirdZeroQuery() override;

    // Shows the settings dialog and, if it is answered by OK, takes the settings over. If the
    // method gives its two numbers now and did not before, or the other way round, the ports are
    // rebuilt and the host is told to connect outputs 1 and 2 anew. So they are if the outputs did
    // not fit the settings: what the dialog leaves, stored, loads again.
    //   changed   gets the flag 1 and the ports 1 and 2 then, and is left alone otherwise
    //   returns   outputPort then, else noPort
    // Memory that runs out leaves by std::bad_alloc, with all as it was.
    PORTTYPE setupDlgPorts(RET_PORT& changed) override;

    // The settings as twelve lines in Windows-1252, ended by CR LF. They are in German whatever the
    // user's language: the report has no other text.
    void writeReport(CArchive& archive) override;

    // The settings as a record of 44 bytes: executionMode, method, direction, convergence,
    // maxIterations, abortAtError, errorValue, abortAtMinError, scaling.
    void storeSettings(CArchive& archive) override;

    // Reads that record, unchecked, and rebuilds the ports; outputCount must fit already. Another
    // version is shown to the user and leaves by an archive exception, cause badSchema, with
    // nothing read. Of a record that ends early the values before the end are taken, and the ports
    // stay as they were; the dialog, answered by OK, fits them to those values.
    void loadSettings(CArchive& archive, CString version) override;

private:
    const char* loadPortName(PORTTYPE side, int port);
    const char* reportPortConflict();

    int processPacket();
    int processBlocks();
    int runPass(Pass& pass, int marker);
    // The signals of a pass: what take takes from inputs 0 and 1. If memory runs out on the way,
    // the rest of the pass is discarded, until no more blocks than those wait on the inputs.
    Pass takePass(SampleArray (FoldModule::*take)(int port), int firstLeft, int secondLeft);
    SampleArray takeBlock(int port);
    SampleArray takePacket(int port);
    void writeWithScalars(const Pass& pass, int marker);

    FoldSettings settings;

    // Takes the longest name in any language. Both name operations share it.
    char nameBuffer[27] = "";
};
