#include "OwnerOnly_win32.h"

#include <vector>

#include <sddl.h>

namespace zelcore {
namespace filesupport {

namespace {

/// The user of this process as access lists name one; empty when the system does not tell.
std::wstring GetUser() {
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) return std::wstring();
    DWORD size = 0;
    GetTokenInformation(token, TokenUser, nullptr, 0, &size);
    std::vector<unsigned char> bytes(size);
    const bool known = size >= sizeof(TOKEN_USER) && GetTokenInformation(token, TokenUser, bytes.data(), size, &size);
    CloseHandle(token);
    wchar_t* text = nullptr;
    if (!known || !ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER*>(bytes.data())->User.Sid, &text))
        return std::wstring();
    const std::wstring user = text;
    LocalFree(text);
    return user;
}

}  // namespace

OwnerOnly::OwnerOnly() : mAttributes{} {
    mAttributes.nLength = sizeof mAttributes;
    const std::wstring user = GetUser();
    if (user.empty()) return;
    // Nothing from the folder above; all rights, also for what comes into it, to the user, the system, administrators.
    const std::wstring list = L"D:P(A;OICI;FA;;;" + user + L")(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)";
    ConvertStringSecurityDescriptorToSecurityDescriptorW(list.c_str(), SDDL_REVISION_1,
                                                         &mAttributes.lpSecurityDescriptor, nullptr);
}

OwnerOnly::~OwnerOnly() { LocalFree(mAttributes.lpSecurityDescriptor); }

void CopyPermissions(const std::wstring& from, const std::wstring& to) {
    DWORD size = 0;
    GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<unsigned char> descriptor(size);
    if (size != 0 && GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), size, &size))
        SetFileSecurityW(to.c_str(), DACL_SECURITY_INFORMATION, descriptor.data());
}

}  // namespace filesupport
}  // namespace zelcore
