#include <zeltransport/PeerProcess.h>

#include <cstddef>
#include <vector>

#include <winsock2.h>
#include <ws2tcpip.h>

#include <iphlpapi.h>
#include <windows.h>

namespace zeltransport {

namespace {

bool ReadTable(std::vector<std::byte>& table) {
    DWORD size = 64 * 1024;
    for (int tries = 0; tries < 8; ++tries) {
        table.resize(size);
        const DWORD result =
            ::GetExtendedTcpTable(table.data(), &size, FALSE, AF_INET, TCP_TABLE_OWNER_PID_CONNECTIONS, 0);
        if (result == NO_ERROR) return true;
        if (result != ERROR_INSUFFICIENT_BUFFER) return false;
        size += size / 4;
    }
    return false;
}

bool BelongsToThisUser(DWORD process) {
    DWORD own = 0;
    DWORD other = 0;
    // Sessions stand for users here; opening the other process for its token may be forbidden even to its own user.
    return ::ProcessIdToSessionId(::GetCurrentProcessId(), &own) && ::ProcessIdToSessionId(process, &other) &&
           own == other;
}

}  // namespace

PeerOwner LookUpPeer(unsigned short peerPort, unsigned short ownPort, unsigned long expectedProcess) {
    std::vector<std::byte> bytes;
    if (!ReadTable(bytes)) return PeerOwner::kNotYet;
    const auto* table = reinterpret_cast<const MIB_TCPTABLE_OWNER_PID*>(bytes.data());
    for (DWORD i = 0; i < table->dwNumEntries; ++i) {
        const MIB_TCPROW_OWNER_PID& row = table->table[i];
        const bool matches = row.dwState == MIB_TCP_STATE_ESTAB && row.dwLocalAddr == htonl(INADDR_LOOPBACK) &&
                             row.dwRemoteAddr == htonl(INADDR_LOOPBACK) &&
                             ntohs(static_cast<u_short>(row.dwLocalPort)) == peerPort &&
                             ntohs(static_cast<u_short>(row.dwRemotePort)) == ownPort;
        if (!matches) continue;
        const bool expected = expectedProcess == 0 || row.dwOwningPid == expectedProcess;
        return expected && BelongsToThisUser(row.dwOwningPid) ? PeerOwner::kExpected : PeerOwner::kForeign;
    }
    return PeerOwner::kNotYet;
}

}  // namespace zeltransport
