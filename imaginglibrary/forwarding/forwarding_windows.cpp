// Finds the system's imaging library and the addresses of its functions, each when it is first called.
#include <windows.h>

#include <cwchar>

// The generated half. The targets begin as the binder and become the system's functions one by one.
extern "C" {
extern void* StubTargets[];
extern void* const AbsentTargets[];
extern const char* const StubNames[];

// What a name that cannot be bound answers.
int AbsentStatus = 0;

void* BindName(unsigned index);
}

namespace {

constexpr int GenericError = 1;
constexpr int NotImplemented = 6;

bool IsThisModule(HMODULE module) {
    HMODULE own = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&BindName), &own);
    return module == own;
}

// The full path keeps the search order, which found this module first, out of it. Null where the system has no module,
// or where the system folder is where this one lies.
HMODULE LoadSystemModule() {
    wchar_t path[MAX_PATH + 16] = L"";
    const UINT length = GetSystemDirectoryW(path, MAX_PATH);
    if (length == 0 || length > MAX_PATH) {
        return nullptr;
    }
    wcscpy(path + length, L"\\gdiplus.dll");
    const HMODULE module = LoadLibraryW(path);
    return module != nullptr && IsThisModule(module) ? nullptr : module;
}

// Two threads may both load it; the module is the same, and both end with the same handle.
HMODULE SystemModule() {
    static HMODULE volatile module = nullptr;
    if (module == nullptr) {
        module = LoadSystemModule();
    }
    return module;
}

} // namespace

void* BindName(unsigned index) {
    const HMODULE module = SystemModule();
    void* const address =
        module == nullptr ? nullptr : reinterpret_cast<void*>(GetProcAddress(module, StubNames[index]));
    if (address == nullptr) {
        AbsentStatus = module == nullptr ? GenericError : NotImplemented;
        return AbsentTargets[index];
    }
    StubTargets[index] = address;
    return address;
}
