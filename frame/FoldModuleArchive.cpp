#include "frame/FoldModule.h"
#include "platform/CArchiveException.h"
#include "platform/CWnd.h"
#include "resources/resources.h"

// In the record method stands before direction, and convergence before maxIterations.
void FoldModule::storeSettings(CArchive& archive) {
    archive << settings.executionMode << settings.method << settings.direction
            << settings.convergence << settings.maxIterations << settings.abortAtError
            << settings.errorValue << settings.abortAtMinError << settings.scaling;
}

void FoldModule::loadSettings(CArchive& archive, CString version) {
    if (version.Compare(moduleVersion) != 0) {
        AfxGetMainWnd()->MessageBox(LoadStrResFromDll(stringVersionConflict), moduleName,
                                    exclamationWithOk);
        AfxThrowArchiveException(CArchiveException::badSchema);
    }
    // Straight into the fields, of which those before an early end stay.
    archive >> settings.executionMode >> settings.method >> settings.direction >>
        settings.convergence >> settings.maxIterations >> settings.abortAtError >>
        settings.errorValue >> settings.abortAtMinError >> settings.scaling;
    InitInputAndOutput();
    initToken();
    ComputeValidationData();
}
