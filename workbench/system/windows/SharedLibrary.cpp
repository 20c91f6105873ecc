#include "workbench/system/SharedLibrary.h"

#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/Program.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <windows.h>

// The system's words for an error, without the full stop and the line end after them.
static std::string reasonOf(DWORD error) {
    std::wstring text(1024, L'\0');
    text.resize(FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                               error, 0, text.data(), static_cast<DWORD>(text.size()), nullptr));
    text.erase(text.find_last_not_of(L". \r\n") + 1);
    return text.empty() ? fmt::format("error {}", error) : nameOf(text);
}

SharedLibrary::SharedLibrary(const std::filesystem::path& file)
    // An absolute path, or the loader would look for a bare name in the system's folders.
    : handle(LoadLibraryW(std::filesystem::absolute(file).c_str())) {
    if (handle == nullptr) {
        throw Failure(printable(reasonOf(GetLastError())));
    }
}

SharedLibrary::~SharedLibrary() {
    FreeLibrary(static_cast<HMODULE>(handle));
}

void* SharedLibrary::symbol(const char* name) const {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle), name));
}

std::filesystem::path SharedLibrary::ownFolder() {
    const HMODULE kernels = GetModuleHandleW(L"fendra-kernels.dll");
    if (kernels == nullptr) {
        return programFile().parent_path();
    }
    std::wstring file(32768, L'\0');  // no path is longer
    file.resize(GetModuleFileNameW(kernels, file.data(), static_cast<DWORD>(file.size())));
    return std::filesystem::path(file).parent_path();
}

std::filesystem::path SharedLibrary::ownFile(const std::string& name) {
    return ownFolder() / (name + ".dll");
}
