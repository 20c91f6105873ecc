#pragma once

#include "host/PORTTYPE.h"
#include "host/PortTables.h"
#include "host/RET_PORT.h"
#include "host/TCTypeInfo.h"
#include "platform/CArchive.h"
#include "platform/CString.h"

#include <cstdint>

// A node of a signal graph: settings, ports and a processing step. A module derives from this
// class, sets the fields below in its constructor, and ends the constructor with
// InitInputAndOutput, initToken and ComputeValidationData, in this order. The same three follow
// every change of the port set.
//
// The host connects ports with streams and then calls Init, and for each step Fetch, Process and
// Done. An object is used by one thread at a time. It ends where it began: the destructor is not
// virtual, and only the library that made an object may delete it.
//
// The order of the virtual operations is fixed: append, never insert or sort. The three zero
// queries and ignorePortEvent have no known use and stay all the same: the slots after them would
// move.
class B_BasisModule : public PortTables {
public:
    B_BasisModule(const B_BasisModule&) = delete;
    B_BasisModule& operator=(const B_BasisModule&) = delete;

    // The kind of module that the object is: moduleName.
    virtual CString GetTypeOfModule() const;

    // Stores moduleVersion (a CString), outputCount (int32) and what storeSettings adds. Loads the
    // same: outputCount is in place when loadSettings is called with the version that it read.
    // A load that fails leaves by an exception, with counts, tokens and streams as they were. It is
    // an archive exception with the cause badIndex where the count cannot be the module's: port
    // numbers are bytes, and with the settings loaded every output has a type and a domain.
    virtual void Serialize(CArchive& archive);

protected:
    virtual int firstZeroQuery();  // 0

    // A port of that side has been connected or freed. The base counts nothing.
    virtual void countPortUp(PORTTYPE side, int port);
    virtual void countPortDown(PORTTYPE side, int port);

public:
    // The node has been double-clicked: shows the settings that may change ports, or those that do
    // not. Results are those of setupDlgPorts and setupDlg.
    virtual PORTTYPE OnLeftDblClk(RET_PORT& changed);
    virtual int OnLeftDblClk();

    // A message of the module beside its results. The base has none: empty.
    virtual CString GetMessageA() const;

protected:
    virtual int secondZeroQuery();  // 0
    virtual void ignorePortEvent(std::uintptr_t first, std::uintptr_t second, std::uintptr_t third);

public:
    virtual int GetIconID() const;    // iconId
    virtual int GetNoInput() const;   // inputCount
    virtual int GetNoOutput() const;  // outputCount

    // Name of a port for the user, in Windows-1252, valid until the next call of either.
    virtual const char* GetInputName(int port);
    virtual const char* GetOutputName(int port);

    // The kinds of signal of a port, "TYPE DOMAIN", separated by ", " where there are several.
    // Empty for a port that does not exist.
    virtual CString GetPortType(PORTTYPE side, int port) const;

    // 1 if the port exists and type and domain are one of its kinds, else 0.
    virtual int ValidatePortType(PORTTYPE side, int port, const CString& type,
                                 const CString& domain) const;

    // The run of a graph. All return 0 for success and a negative code for failure; the base has
    // nothing to do and returns 0.
    virtual int Init();     // before the first step
    virtual int Fetch();    // before each Process
    virtual int Process();  // works on what waits on the inputs and writes the outputs: ProcessCode
    virtual int Done();     // after each Process

    // Connects an input with a stream, null for none. The stream stays the caller's and outlives
    // the connection. A port that does not exist is ignored.
    virtual void SetInputStream(int port, std::istream* stream);

    // Adds a stream to an output: each of its streams gets each block. A stream is on one output,
    // once: room for a block is made on each stream by itself. Ownership and ports as for
    // SetInputStream; null adds nothing.
    virtual void AddOutputStream(int port, BlockStream* stream);

    // Disconnects all ports.
    virtual void DeleteStreams();

    // Fixes what GetPortType and ValidatePortType answer, from the tokens as they stand.
    virtual void ComputeValidationData();

protected:
    // Appends the type and domain tokens of each port to its lists. An override calls the base
    // first, which appends nothing.
    virtual void initToken();

    // Fits the stream tables to the counts; connections of ports that stay are kept.
    virtual void initStreams();

    // Names of the ports. The base has none: empty.
    virtual const char* getInportName(int port);
    virtual const char* getOutportName(int port);

public:
    // One empty token list per port, by the counts as they stand; calls initStreams.
    virtual void InitInputAndOutput();

protected:
    virtual int thirdZeroQuery();  // 0

    // Settings dialog that may change ports. If it does, the result is the side that changed, and
    // changed lists the ports. The base has no dialog: noPort, and changed as it was.
    virtual PORTTYPE setupDlgPorts(RET_PORT& changed);

    // Settings dialog that changes no port: 1 if it was answered with OK. The base has none: 0.
    virtual int setupDlg();

    // The settings as text. The base has none and writes nothing, here and below.
    virtual void writeReport(CArchive& archive);

    // The settings as a record of the archive, without the version.
    virtual void storeSettings(CArchive& archive);

    // Reads that record and rebuilds the ports; version is that of the module that stored it.
    // Failures leave by an exception.
    virtual void loadSettings(CArchive& archive, CString version);

public:
    // The report of the module, through writeReport.
    void WriteReport(CArchive& archive);

    CString instanceName;
    CString moduleName;
    CString moduleVersion;
    CString helpKey;
    int instanceNumber = 0;
    int iconId = 0;
    int inputCounter = 0;   // connected inputs
    int outputCounter = 0;  // connected outputs
    double scalarStep = 0.0;
    TCTypeInfo typeInfo;
    int reservedNumber = 0;     // of no meaning to this library
    bool reservedFlag = false;  // of no meaning to this library

protected:
    B_BasisModule() = default;
    ~B_BasisModule() = default;

    // Empties the streams of all outputs.
    void clearAllOutportStreams();

    // Removes blocks of an input, unread, until no more than left wait on it. Needs no memory.
    void discardFromInport(int port, int left);

    // Takes the next block of an input. The caller deletes the array with delete[].
    //   array, count   the samples; null and 0 where no block waits or the port does not exist
    //   returns        1: taken. 0: nothing waits. Memory that runs out leaves by std::bad_alloc,
    //                  with the block where it was, array null and count 0.
    // The flag has no meaning to this library.
    int newAndReadArrayFromInport(int port, double*& array, int& count, bool flag);

    // Makes room on all streams of an output, so that the next block of at most count samples is
    // written to them without fail. Memory that runs out leaves by std::bad_alloc.
    void reserveOnOutport(int port, int count);

    // Writes a block of count samples, or of one, to all streams of an output. Name and type do not
    // travel with the block, and the flag has no meaning to this library.
    //   returns   1: written, or no stream is on the output. 0: no such port, or a negative count.
    //             Memory that runs out leaves by std::bad_alloc, with nothing written.
    int writeArrayToOutport(int port, const double* array, int count, int marker, bool flag,
                            const char* name, const char* type);
    int writeScalarToOutport(int port, double value, int marker, bool flag, const char* name,
                             const char* type);

    // String resource in the user's language; empty if there is none.
    static CString LoadStrResFromDll(unsigned id);

private:
    void load(CArchive& archive);

    BlockStream emptyStream;  // stands on inputs without a stream
};
