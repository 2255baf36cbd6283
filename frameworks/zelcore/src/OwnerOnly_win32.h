#pragma once

#include <string>

#include <windows.h>

namespace zelcore {
namespace filesupport {

/// Who may use what is made: this user and the system, with all that comes to lie in it.
class OwnerOnly {
public:
    OwnerOnly();
    ~OwnerOnly();
    OwnerOnly(const OwnerOnly&) = delete;
    OwnerOnly& operator=(const OwnerOnly&) = delete;

    /// Null, which is the system's default, where the system does not tell who the user is.
    SECURITY_ATTRIBUTES* Get() { return mAttributes.lpSecurityDescriptor != nullptr ? &mAttributes : nullptr; }

private:
    SECURITY_ATTRIBUTES mAttributes;
};

/// Lets the same people at the file `to` as at the file `from`; nothing, where there is no `from` or where file systems
/// know no permissions: the content matters more than they do.
void CopyPermissions(const std::wstring& from, const std::wstring& to);

}  // namespace filesupport
}  // namespace zelcore
