#include <zeltransport/PeerProcess.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <optional>
#include <vector>

#include <winsock2.h>
#include <ws2tcpip.h>

#include <iphlpapi.h>
#include <windows.h>

namespace zeltransport {

namespace {

// Far beyond any real table; the bound only keeps a strange one from holding up the I/O thread.
constexpr DWORD kMaxTableSize = 32 * 1024 * 1024;

struct CloseProcessHandle {
    void operator()(void* handle) const { ::CloseHandle(handle); }
};
typedef std::unique_ptr<void, CloseProcessHandle> Handle;

/// The system's table of connections with their processes; empty when it cannot be had.
std::vector<std::byte> ReadTable(ULONG family) {
    std::vector<std::byte> table;
    DWORD size = 64 * 1024;
    while (size <= kMaxTableSize) {
        table.resize(size);
        const DWORD result =
            ::GetExtendedTcpTable(table.data(), &size, FALSE, family, TCP_TABLE_OWNER_PID_CONNECTIONS, 0);
        if (result == NO_ERROR) return table;
        if (result != ERROR_INSUFFICIENT_BUFFER) break;
        // It may have grown again by the next call.
        size += size / 4;
    }
    return {};
}

unsigned short ToPort(DWORD port) { return ntohs(static_cast<u_short>(port)); }

bool IsLoopback(DWORD address) { return address == htonl(INADDR_LOOPBACK); }

/// The same in the other protocol's table, where a server that listens for both has its connections.
bool IsLoopback(const UCHAR (&address)[16]) {
    static const UCHAR kMapped[16] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 127, 0, 0, 1};
    return std::equal(std::begin(kMapped), std::end(kMapped), address);
}

bool IsBetween(const MIB_TCPROW_OWNER_PID& row) { return IsLoopback(row.dwLocalAddr) && IsLoopback(row.dwRemoteAddr); }

bool IsBetween(const MIB_TCP6ROW_OWNER_PID& row) { return IsLoopback(row.ucLocalAddr) && IsLoopback(row.ucRemoteAddr); }

/// The process that holds the far end, as its own side of the connection says; nothing when there is no such side.
template <typename Table>
std::optional<DWORD> FindIn(ULONG family, unsigned short peerPort, unsigned short ownPort) {
    const std::vector<std::byte> bytes = ReadTable(family);
    if (bytes.size() < sizeof(Table)) return {};
    const auto* const table = reinterpret_cast<const Table*>(bytes.data());
    for (DWORD i = 0; i < table->dwNumEntries; ++i) {
        const auto& row = table->table[i];
        if (row.dwState == MIB_TCP_STATE_ESTAB && IsBetween(row) && ToPort(row.dwLocalPort) == peerPort &&
            ToPort(row.dwRemotePort) == ownPort)
            return row.dwOwningPid;
    }
    return {};
}

std::optional<DWORD> FindPeer(unsigned short peerPort, unsigned short ownPort) {
    const auto process = FindIn<MIB_TCPTABLE_OWNER_PID>(AF_INET, peerPort, ownPort);
    return process ? process : FindIn<MIB_TCP6TABLE_OWNER_PID>(AF_INET6, peerPort, ownPort);
}

std::vector<std::byte> ReadUser(HANDLE process) {
    HANDLE opened = nullptr;
    if (!::OpenProcessToken(process, TOKEN_QUERY, &opened)) return {};
    const Handle token(opened);
    DWORD size = 0;
    ::GetTokenInformation(token.get(), TokenUser, nullptr, 0, &size);
    std::vector<std::byte> user(size);
    if (size < sizeof(TOKEN_USER) || !::GetTokenInformation(token.get(), TokenUser, user.data(), size, &size))
        return {};
    return user;
}

PSID GetId(const std::vector<std::byte>& user) { return reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid; }

bool BelongsToThisUser(DWORD process) {
    const Handle opened(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process));
    if (!opened) return false;
    const std::vector<std::byte> other = ReadUser(opened.get());
    const std::vector<std::byte> own = ReadUser(::GetCurrentProcess());
    return !other.empty() && !own.empty() && ::EqualSid(GetId(other), GetId(own));
}

/// Under wine the table names no process for most connections, as a server of its own holds their sockets. There the
/// check is no more than that the expected process runs and is this user's.
bool HidesOwners() {
    static const bool sHides = ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
    return sHides;
}

}  // namespace

PeerOwner LookUpPeer(unsigned short peerPort, unsigned short ownPort, unsigned long expectedProcess) {
    const std::optional<DWORD> found = FindPeer(peerPort, ownPort);
    if (!found || (*found == 0 && !HidesOwners())) return PeerOwner::kNotYet;
    if (*found == 0 && expectedProcess == 0) return PeerOwner::kExpected;
    const DWORD process = *found == 0 ? expectedProcess : *found;
    const bool expected = expectedProcess == 0 || process == expectedProcess;
    return expected && BelongsToThisUser(process) ? PeerOwner::kExpected : PeerOwner::kForeign;
}

}  // namespace zeltransport
