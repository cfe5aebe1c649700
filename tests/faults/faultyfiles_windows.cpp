// What takes the place of the Windows calls on files in a program that is linked with this: the pointers through which
// they are called are its own.
#include "tests/faults/faultyfiles.h"

#include "tests/support/importslot.h"

#include <windows.h>

namespace {

using tests::FileCall;

bool Fails(FileCall call) {
    const int error = tests::ErrorOf(call);
    if (error != 0) {
        SetLastError(static_cast<DWORD>(error));
    }
    return error != 0;
}

template <class Function> Function* System(const char* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), name)));
}

HANDLE WINAPI OpenFileA(const char* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD creation,
                        DWORD flags, HANDLE model) {
    static const auto open = System<decltype(CreateFileA)>("CreateFileA");
    return Fails(FileCall::Open) ? INVALID_HANDLE_VALUE : open(path, access, share, security, creation, flags, model);
}

HANDLE WINAPI OpenFileW(const wchar_t* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD creation,
                        DWORD flags, HANDLE model) {
    static const auto open = System<decltype(CreateFileW)>("CreateFileW");
    return Fails(FileCall::Open) ? INVALID_HANDLE_VALUE : open(path, access, share, security, creation, flags, model);
}

BOOL WINAPI WriteToFile(HANDLE file, const void* bytes, DWORD count, DWORD* written, OVERLAPPED* place) {
    static const auto write = System<decltype(WriteFile)>("WriteFile");
    const tests::WriteAllowance allowance = tests::AllowanceFor(count);
    if (allowance.error != 0) {
        SetLastError(static_cast<DWORD>(allowance.error));
        return FALSE;
    }
    return write(file, bytes, static_cast<DWORD>(allowance.count), written, place);
}

BOOL WINAPI FlushFile(HANDLE file) {
    static const auto flush = System<decltype(FlushFileBuffers)>("FlushFileBuffers");
    return !Fails(FileCall::Flush) && flush(file);
}

BOOL WINAPI ChangeFile(HANDLE file, FILE_INFO_BY_HANDLE_CLASS kind, void* facts, DWORD size) {
    static const auto change = System<decltype(SetFileInformationByHandle)>("SetFileInformationByHandle");
    const bool isKept = kind == FileDispositionInfo && !static_cast<FILE_DISPOSITION_INFO*>(facts)->DeleteFile;
    return !(isKept && Fails(FileCall::Name)) && change(file, kind, facts, size);
}

BOOL WINAPI CloseAnyHandle(HANDLE handle) {
    static const auto close = System<decltype(CloseHandle)>("CloseHandle");
    const bool isFile = GetFileType(handle) == FILE_TYPE_DISK;
    const int error = isFile ? tests::ErrorOf(FileCall::Close) : 0;
    const BOOL isClosed = close(handle);
    if (error != 0) {
        SetLastError(static_cast<DWORD>(error));
    }
    return error == 0 && isClosed;
}

BOOL WINAPI MoveA(const char* from, const char* to, DWORD flags) {
    static const auto move = System<decltype(MoveFileExA)>("MoveFileExA");
    return !Fails(FileCall::Rename) && move(from, to, flags);
}

BOOL WINAPI MoveW(const wchar_t* from, const wchar_t* to, DWORD flags) {
    static const auto move = System<decltype(MoveFileExW)>("MoveFileExW");
    return !Fails(FileCall::Rename) && move(from, to, flags);
}

} // namespace

void tests::TakeCallsOfLibrary(const char* name) {
    const auto take = [library = GetModuleHandleA(name)](const char* function, auto* replacement) {
        if (void** const slot = ImportSlot(library, function); slot != nullptr) {
            PutIntoSlot(slot, reinterpret_cast<void*>(replacement));
        }
    };
    take("CreateFileA", OpenFileA);
    take("CreateFileW", OpenFileW);
    take("WriteFile", WriteToFile);
    take("FlushFileBuffers", FlushFile);
    take("SetFileInformationByHandle", ChangeFile);
    take("CloseHandle", CloseAnyHandle);
    take("MoveFileExA", MoveA);
    take("MoveFileExW", MoveW);
}

extern "C" {
extern decltype(&OpenFileA) createFileA __asm__("__imp__CreateFileA@28");
decltype(&OpenFileA) createFileA = OpenFileA;
extern decltype(&OpenFileW) createFileW __asm__("__imp__CreateFileW@28");
decltype(&OpenFileW) createFileW = OpenFileW;
extern decltype(&WriteToFile) writeFile __asm__("__imp__WriteFile@20");
decltype(&WriteToFile) writeFile = WriteToFile;
extern decltype(&FlushFile) flushFile __asm__("__imp__FlushFileBuffers@4");
decltype(&FlushFile) flushFile = FlushFile;
extern decltype(&ChangeFile) changeFile __asm__("__imp__SetFileInformationByHandle@16");
decltype(&ChangeFile) changeFile = ChangeFile;
extern decltype(&CloseAnyHandle) closeHandle __asm__("__imp__CloseHandle@4");
decltype(&CloseAnyHandle) closeHandle = CloseAnyHandle;
extern decltype(&MoveA) moveA __asm__("__imp__MoveFileExA@12");
decltype(&MoveA) moveA = MoveA;
extern decltype(&MoveW) moveW __asm__("__imp__MoveFileExW@12");
decltype(&MoveW) moveW = MoveW;
}
