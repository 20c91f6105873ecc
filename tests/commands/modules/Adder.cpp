#include "host/B_BasisModule.h"
#include "host/ProcessCode.h"
#include "platform/CWinApp.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>

namespace {

// A module of another maker: adds two signals of equal length. Whoever stores or loads settings,
// which it does not have, ends the process.
class Adder final : public B_BasisModule {
public:
    Adder() {
        moduleName = "Adder";
        moduleVersion = "V0.1";
        inputCount = 2;
        outputCount = 1;
        InitInputAndOutput();
        Adder::initToken();
        ComputeValidationData();
    }

    int Process() override {
        double *sum = nullptr, *other = nullptr;
        int length = 0, otherLength = 0;
        newAndReadArrayFromInport(0, sum, length, false);
        newAndReadArrayFromInport(1, other, otherLength, false);
        const std::unique_ptr<double[]> first(sum), second(other);
        std::transform(sum, sum + std::min(length, otherLength), other, sum, std::plus<>());
        writeArrayToOutport(0, sum, length, BlockHeader::last, false, "", "");
        return ProcessCode::done;
    }

protected:
    void initToken() override {
        for (CStringArray* port :
             {&inportTypeTokens[0], &inportTypeTokens[1], &outportTypeTokens[0]}) {
            port->Add("DOUBLE[]");
        }
        for (CStringArray* port :
             {&inportDomainTokens[0], &inportDomainTokens[1], &outportDomainTokens[0]}) {
            port->Add("TIME_DOMAIN");
        }
    }
    const char* getInportName(int port) override { return port == 0 ? "augend" : "addend"; }
    const char* getOutportName(int /*port*/) override { return "sum"; }
    void storeSettings(CArchive& /*archive*/) override { std::abort(); }
    void loadSettings(CArchive& /*archive*/, CString /*version*/) override { std::abort(); }
};

}  // namespace

extern "C" {
CWinApp theApp;

B_BasisModule* GetModuleInstance() {
    return new Adder;
}
void DeleteModuleInstance(B_BasisModule* module) {
    delete static_cast<Adder*>(module);
}
int InitDLL() {
    return 1;
}
unsigned GetBitmapID() {
    return 0;
}
unsigned GetBitmapStringResource() {
    return 0;
}
int IsDebug() {
    return 0;
}
const char* GetCID() {
    return "";
}
}
