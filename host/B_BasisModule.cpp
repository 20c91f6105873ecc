#include "host/B_BasisModule.h"

#include "platform/ResourceChain.h"

#include <algorithm>
#include <utility>

// Port numbers are bytes: RET_PORT lists them in a CByteArray.
static constexpr int maxPorts = 256;

CString B_BasisModule::GetTypeOfModule() const {
    return moduleName;
}

void B_BasisModule::Serialize(CArchive& archive) {
    if (archive.IsStoring()) {
        archive << moduleVersion << outputCount;
        storeSettings(archive);
    } else {
        load(archive);
    }
}

// True if there are count lists, and a token in each.
static bool complete(const PortList<CStringArray>& tokens, int count) {
    return tokens.size() == count &&
           std::all_of(tokens.begin(), tokens.end(),
                       [](const CStringArray& list) { return list.GetSize() > 0; });
}

void B_BasisModule::load(CArchive& archive) {
    CString version;
    std::int32_t count = 0;
    archive >> version >> count;
    if (count < 0 || count > maxPorts) {
        AfxThrowArchiveException(CArchiveException::badIndex);
    }
    PortTables& ports = *this;
    PortTables before = ports;
    outputCount = count;
    try {
        loadSettings(archive, version);
        // Settings with fewer outputs than the count leave a surplus one without tokens; settings
        // with more have already failed on the checked lists.
        if (!complete(outportTypeTokens, outputCount) ||
            !complete(outportDomainTokens, outputCount)) {
            AfxThrowArchiveException(CArchiveException::badIndex);
        }
    } catch (...) {
        std::swap(ports, before);
        throw;
    }
}

int B_BasisModule::firstZeroQuery() {
    return 0;
}

void B_BasisModule::countPortUp(PORTTYPE /*side*/, int /*port*/) {}

void B_BasisModule::countPortDown(PORTTYPE /*side*/, int /*port*/) {}

PORTTYPE B_BasisModule::OnLeftDblClk(RET_PORT& changed) {
    return setupDlgPorts(changed);
}

int B_BasisModule::OnLeftDblClk() {
    return setupDlg();
}

CString B_BasisModule::GetMessageA() const {
    return {};
}

int B_BasisModule::secondZeroQuery() {
    return 0;
}

void B_BasisModule::ignorePortEvent(std::uintptr_t /*first*/, std::uintptr_t /*second*/,
                                    std::uintptr_t /*third*/) {}

int B_BasisModule::GetIconID() const {
    return iconId;
}

int B_BasisModule::GetNoInput() const {
    return inputCount;
}

int B_BasisModule::GetNoOutput() const {
    return outputCount;
}

const char* B_BasisModule::GetInputName(int port) {
    return getInportName(port);
}

const char* B_BasisModule::GetOutputName(int port) {
    return getOutportName(port);
}

static const CStringArray* kindsOf(const PortTables& ports, PORTTYPE side, int port) {
    const PortList<CStringArray>& lists =
        side == inputPort ? ports.inportKinds : ports.outportKinds;
    return side != noPort && lists.has(port) ? &lists[port] : nullptr;
}

CString B_BasisModule::GetPortType(PORTTYPE side, int port) const {
    const CStringArray* const kinds = kindsOf(*this, side, port);
    CString all;
    for (int i = 0; kinds != nullptr && i < kinds->GetSize(); ++i) {
        all += i > 0 ? ", " + kinds->GetAt(i) : kinds->GetAt(i);
    }
    return all;
}

static CString makeKind(const CString& type, const CString& domain) {
    return type + " " + domain;
}

int B_BasisModule::ValidatePortType(PORTTYPE side, int port, const CString& type,
                                    const CString& domain) const {
    const CStringArray* const kinds = kindsOf(*this, side, port);
    for (int i = 0; kinds != nullptr && i < kinds->GetSize(); ++i) {
        if (kinds->GetAt(i) == makeKind(type, domain)) {
            return 1;
        }
    }
    return 0;
}

int B_BasisModule::Init() {
    return 0;
}

int B_BasisModule::Fetch() {
    return 0;
}

int B_BasisModule::Process() {
    return 0;
}

int B_BasisModule::Done() {
    return 0;
}

void B_BasisModule::SetInputStream(int port, std::istream* stream) {
    if (inportStreams.has(port)) {
        inportStreams[port] = stream != nullptr ? stream : &emptyStream;
    }
}

void B_BasisModule::AddOutputStream(int port, BlockStream* stream) {
    if (outportStreams.has(port) && stream != nullptr) {
        outportStreams[port].push_back(stream);
    }
}

void B_BasisModule::DeleteStreams() {
    std::fill(inportStreams.begin(), inportStreams.end(), &emptyStream);
    for (auto& streams : outportStreams) {
        streams.clear();
    }
}

static PortList<CStringArray> joinTokens(const PortList<CStringArray>& types,
                                         const PortList<CStringArray>& domains) {
    PortList<CStringArray> kinds;
    kinds.resize(types.size());
    for (int port = 0; port < kinds.size(); ++port) {
        const int count = std::min(types[port].GetSize(), domains[port].GetSize());
        for (int i = 0; i < count; ++i) {
            kinds[port].Add(makeKind(types[port].GetAt(i), domains[port].GetAt(i)));
        }
    }
    return kinds;
}

void B_BasisModule::ComputeValidationData() {
    inportKinds = joinTokens(inportTypeTokens, inportDomainTokens);
    outportKinds = joinTokens(outportTypeTokens, outportDomainTokens);
}

void B_BasisModule::initToken() {}

void B_BasisModule::initStreams() {
    inportStreams.resize(inputCount, &emptyStream);
    outportStreams.resize(outputCount);
}

const char* B_BasisModule::getInportName(int /*port*/) {
    return "";
}

const char* B_BasisModule::getOutportName(int /*port*/) {
    return "";
}

void B_BasisModule::InitInputAndOutput() {
    for (PortList<CStringArray>* lists : {&inportTypeTokens, &inportDomainTokens}) {
        lists->clear();
        lists->resize(inputCount);
    }
    for (PortList<CStringArray>* lists : {&outportTypeTokens, &outportDomainTokens}) {
        lists->clear();
        lists->resize(outputCount);
    }
    initStreams();
}

int B_BasisModule::thirdZeroQuery() {
    return 0;
}

PORTTYPE B_BasisModule::setupDlgPorts(RET_PORT& /*changed*/) {
    return noPort;
}

int B_BasisModule::setupDlg() {
    return 0;
}

void B_BasisModule::writeReport(CArchive& /*archive*/) {}

void B_BasisModule::storeSettings(CArchive& /*archive*/) {}

// NOLINTNEXTLINE(performance-unnecessary-value-param): modules override it with this signature.
void B_BasisModule::loadSettings(CArchive& /*archive*/, CString /*version*/) {}

void B_BasisModule::WriteReport(CArchive& archive) {
    writeReport(archive);
}

void B_BasisModule::clearAllOutportStreams() {
    for (const auto& streams : outportStreams) {
        for (BlockStream* stream : streams) {
            stream->discardAll();
        }
    }
}

// The stream of an input; null if there is none, or one that does not carry blocks.
static BlockStream* blocksOf(const PortTables& ports, int port) {
    return ports.inportStreams.has(port) ? dynamic_cast<BlockStream*>(ports.inportStreams[port])
                                         : nullptr;
}

void B_BasisModule::discardFromInport(int port, int left) {
    BlockStream* const stream = blocksOf(*this, port);
    if (stream == nullptr) {
        return;
    }
    for (int i = stream->waitingBlocks(); i > left; --i) {
        stream->discardBlock();
    }
}

int B_BasisModule::newAndReadArrayFromInport(int port, double*& array, int& count, bool /*flag*/) {
    array = nullptr;
    count = 0;
    BlockStream* const stream = blocksOf(*this, port);
    const auto header = stream != nullptr ? stream->nextBlock() : std::nullopt;
    if (!header) {
        return 0;
    }
    array = new double[static_cast<std::size_t>(header->count)];
    count = header->count;
    stream->takeBlock(array);
    return 1;
}

void B_BasisModule::reserveOnOutport(int port, int count) {
    if (outportStreams.has(port)) {
        for (BlockStream* stream : outportStreams[port]) {
            stream->reserveBlock(count);
        }
    }
}

int B_BasisModule::writeArrayToOutport(int port, const double* array, int count, int marker,
                                       bool /*flag*/, const char* /*name*/, const char* /*type*/) {
    if (!outportStreams.has(port) || count < 0) {
        return 0;
    }
    reserveOnOutport(port, count);  // first: either each stream gets the block, or none
    for (BlockStream* stream : outportStreams[port]) {
        stream->writeBlock(marker, array, count);
    }
    return 1;
}

int B_BasisModule::writeScalarToOutport(int port, double value, int marker, bool flag,
                                        const char* name, const char* type) {
    return writeArrayToOutport(port, &value, 1, marker, flag, name, type);
}

CString B_BasisModule::LoadStrResFromDll(unsigned id) {
    return ResourceChain::string(id);
}
