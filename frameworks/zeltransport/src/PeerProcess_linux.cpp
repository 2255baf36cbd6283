#include <zeltransport/PeerProcess.h>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <arpa/inet.h>
#include <dirent.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <unistd.h>

namespace zeltransport {

namespace {

// Far beyond any real table; the bound only keeps a strange one from holding up the I/O thread.
constexpr std::size_t kMaxTableSize = 32 * 1024 * 1024;
constexpr std::string_view kEstablished = "01";

struct Entry {
    unsigned long user = 0;
    unsigned long inode = 0;
};

class Descriptor {
public:
    explicit Descriptor(int descriptor) : mDescriptor(descriptor) {}
    ~Descriptor() {
        if (mDescriptor >= 0) ::close(mDescriptor);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int Get() const { return mDescriptor; }

private:
    const int mDescriptor;
};

std::string_view TakeField(std::string_view& line) {
    const std::size_t start = line.find_first_not_of(' ');
    if (start == std::string_view::npos) return {};
    const std::size_t end = line.find(' ', start);
    const std::string_view field = line.substr(start, end == std::string_view::npos ? end : end - start);
    line = end == std::string_view::npos ? std::string_view() : line.substr(end);
    return field;
}

bool ParseNumber(std::string_view text, unsigned long& number) {
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return !text.empty() && result.ec == std::errc() && result.ptr == text.data() + text.size();
}

/// An end of a connection as the table writes it: the address word by word in the machine's byte order, then the port.
std::string FormatEnd(unsigned short port, bool mapped) {
    char address[48];
    const auto loopback = static_cast<unsigned>(htonl(INADDR_LOOPBACK));
    if (mapped) {
        std::snprintf(address, sizeof address, "0000000000000000%08X%08X:%04X", static_cast<unsigned>(htonl(0xFFFF)),
                      loopback, static_cast<unsigned>(port));
    } else {
        std::snprintf(address, sizeof address, "%08X:%04X", loopback, static_cast<unsigned>(port));
    }
    return address;
}

std::optional<Entry> ParseLine(std::string_view line, const std::string& localEnd, const std::string& remoteEnd) {
    TakeField(line);
    if (TakeField(line) != localEnd || TakeField(line) != remoteEnd || TakeField(line) != kEstablished) return {};
    for (int queuesTimerAndRetransmits = 0; queuesTimerAndRetransmits < 3; ++queuesTimerAndRetransmits) TakeField(line);
    Entry entry;
    if (!ParseNumber(TakeField(line), entry.user)) return {};
    TakeField(line);
    if (!ParseNumber(TakeField(line), entry.inode)) return {};
    return entry;
}

std::optional<Entry> FindIn(const char* table, const std::string& localEnd, const std::string& remoteEnd) {
    const Descriptor file(::open(table, O_RDONLY | O_CLOEXEC));
    if (file.Get() < 0) return {};
    char chunk[16 * 1024];
    std::string rest;
    for (std::size_t total = 0; total < kMaxTableSize;) {
        const ssize_t size = ::read(file.Get(), chunk, sizeof chunk);
        if (size <= 0) return {};
        total += static_cast<std::size_t>(size);
        rest.append(chunk, static_cast<std::size_t>(size));
        std::size_t start = 0;
        for (std::size_t end; (end = rest.find('\n', start)) != std::string::npos; start = end + 1) {
            const std::string_view line(rest.data() + start, end - start);
            if (const auto entry = ParseLine(line, localEnd, remoteEnd)) return entry;
        }
        rest.erase(0, start);
    }
    return {};
}

/// The far end of the connection, seen as its own process sees it.
std::optional<Entry> FindPeer(unsigned short peerPort, unsigned short ownPort) {
    const auto entry = FindIn("/proc/self/net/tcp", FormatEnd(peerPort, false), FormatEnd(ownPort, false));
    if (entry) return entry;
    // A server that listens for both protocols has its connections in the other table.
    return FindIn("/proc/self/net/tcp6", FormatEnd(peerPort, true), FormatEnd(ownPort, true));
}

bool HoldsSocket(unsigned long process, unsigned long inode) {
    const std::string folder = "/proc/" + std::to_string(process) + "/fd";
    const std::unique_ptr<DIR, int (*)(DIR*)> descriptors(::opendir(folder.c_str()), &::closedir);
    if (!descriptors) return false;
    const std::string wanted = "socket:[" + std::to_string(inode) + "]";
    while (const dirent* item = ::readdir(descriptors.get())) {
        char target[64];
        const ssize_t size = ::readlinkat(::dirfd(descriptors.get()), item->d_name, target, sizeof target);
        if (size > 0 && std::string_view(target, static_cast<std::size_t>(size)) == wanted) return true;
    }
    return false;
}

}  // namespace

PeerOwner LookUpPeer(unsigned short peerPort, unsigned short ownPort, unsigned long expectedProcess) {
    // The table and the descriptors are two looks at things that move: what was not found the first time may have come
    // between them, so only a second look, from the start, decides.
    for (int look = 0; look < 2; ++look) {
        const std::optional<Entry> entry = FindPeer(peerPort, ownPort);
        // Until it is accepted, a connection belongs to nobody and says user 0.
        if (!entry || entry->inode == 0) return PeerOwner::kNotYet;
        if (entry->user != static_cast<unsigned long>(::geteuid())) return PeerOwner::kForeign;
        if (expectedProcess == 0 || HoldsSocket(expectedProcess, entry->inode)) return PeerOwner::kExpected;
    }
    return PeerOwner::kForeign;
}

}  // namespace zeltransport
