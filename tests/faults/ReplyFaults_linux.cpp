#include "ReplyFaults.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <regex>

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "FaultPoints.h"

namespace zelfaults {

namespace {

constexpr std::size_t kHeaderSize = 4;

ssize_t SendPlainly(int socket, const void* bytes, std::size_t size, int flags) {
    static auto* const next = reinterpret_cast<ssize_t (*)(int, const void*, size_t, int)>(dlsym(RTLD_NEXT, "send"));
    return next(socket, bytes, size, flags);
}

std::string GetEnvironment(const char* name) {
    const char* const text = std::getenv(name);
    return text ? text : "";
}

unsigned long CountStarts(const std::string& log) {
    std::ifstream file(log);
    unsigned long count = 0;
    for (std::string line; std::getline(file, line);) count += line.ends_with(" start") ? 1 : 0;
    return count;
}

/// The plug-in that a reply names; empty when it names none.
std::string FindLocator(const std::string& frame) {
    constexpr char kKey[] = "\"locator\":\"";
    const std::size_t key = frame.find(kKey);
    if (key == std::string::npos) return std::string();
    const std::size_t begin = key + sizeof kKey - 1;
    return frame.substr(begin, frame.find('"', begin) - begin);
}

unsigned long FindId(const std::string& frame) {
    constexpr char kKey[] = "\"id\":";
    const std::size_t key = frame.find(kKey);
    return key == std::string::npos ? 0 : std::strtoul(frame.c_str() + key + sizeof kKey - 1, nullptr, 10);
}

std::string MakeFrame(const std::string& body) {
    std::string frame;
    for (unsigned shift = 0; shift < 32; shift += 8) frame.push_back(static_cast<char>((body.size() >> shift) & 0xFF));
    return frame + body;
}

std::string WithId(const std::string& frame, unsigned long id) {
    const std::string body = frame.substr(kHeaderSize);
    return MakeFrame(std::regex_replace(body, std::regex("\"id\":[0-9]+"), "\"id\":" + std::to_string(id)));
}

void Wait(unsigned long milliseconds) { poll(nullptr, 0, static_cast<int>(milliseconds)); }

}  // namespace

ReplyFaults& ReplyFaults::GetInstance() {
    static ReplyFaults instance;
    return instance;
}

ReplyFaults::ReplyFaults()
    : mLogFile(::open(GetEnvironment("ZEL_FAULT_LOG").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600)) {
    const std::string times = GetEnvironment("ZEL_FAULT_TIMES");
    if (CountStarts(GetEnvironment("ZEL_FAULT_LOG")) < std::strtoul(times.c_str(), nullptr, 10))
        mPlan = FaultPlan::Read(FaultPlan::kScannerVariable);
    Log("start");
    if (mPlan.what == "file") FaultPoints::CountFiles(GetEnvironment("ZEL_FAULT_PROFILE"), mPlan);
    if (mPlan.what == "memory") FaultPoints::CountAllocations(mPlan);
}

long ReplyFaults::Send(int socket, const std::string& frame, int flags) {
    const std::string locator = FindLocator(frame);
    if (!locator.empty()) Log("about " + locator);
    if (mCount == mPlan.at) BeginFault();
    Act(socket, frame, flags);
    ++mCount;
    if (!locator.empty()) Log("sent " + locator);
    return static_cast<long>(frame.size());
}

void ReplyFaults::BeginFault() {
    if (mPlan.what == "handles") FaultPoints::LimitHandles(mPlan.GetAmount());
    if (mPlan.what == "space") FaultPoints::LimitMemory(mPlan.GetAmount());
    if (mPlan.what == "size") FaultPoints::LimitFileSize(mPlan.GetAmount());
}

void ReplyFaults::Act(int socket, const std::string& frame, int flags) {
    const bool isDue = mCount == mPlan.at;
    if (isDue && mPlan.what == "kill") {
        if (mPlan.how == "before") FaultPoints::Die();
        Pass(socket, mPlan.how == "half" ? frame.substr(0, frame.size() / 2) : frame, flags);
        FaultPoints::Die();
    }
    if (isDue && mPlan.what == "type") return Pass(socket, MakeWrong(frame), flags);
    if (isDue && mPlan.what == "order")
        Pass(socket, WithId(frame, mPlan.how == "early" ? FindId(frame) + 1 : FindId(frame) - 1), flags);
    if (isDue && mPlan.what == "twice") Pass(socket, frame, flags);
    if (mCount >= mPlan.at && mPlan.what == "delay") Wait(mPlan.GetAmount());
    if (mCount >= mPlan.at && mPlan.what == "bytes") return PassInBytes(socket, frame, flags);
    Pass(socket, frame, flags);
}

void ReplyFaults::Pass(int socket, const std::string& frame, int flags) const {
    SendPlainly(socket, frame.data(), frame.size(), flags);
}

void ReplyFaults::PassInBytes(int socket, const std::string& frame, int flags) const {
    for (const char byte : frame) {
        // The other side may have taken enough of it.
        if (SendPlainly(socket, &byte, 1, flags) < 0 && errno != EAGAIN) return;
    }
}

void ReplyFaults::Log(const std::string& line) const {
    const std::string text = std::to_string(getpid()) + " " + line + "\n";
    const ssize_t ignored = ::write(mLogFile, text.data(), text.size());
    static_cast<void>(ignored);
}

std::string ReplyFaults::MakeWrong(const std::string& frame) const {
    const std::string id = std::to_string(FindId(frame));
    const std::string begin = "{\"jsonrpc\":\"2.0\",\"id\":" + id + ",";
    const std::array<std::string, kForms> forms = {
        begin + "\"result\":7}",
        begin + "\"result\":[]}",
        begin + "\"result\":{\"value\":7}}",
        begin + "\"result\":{\"value\":{\"continue\":\"yes\",\"progress\":\"many\",\"total\":[],\"locator\":3}}}",
        begin + "\"result\":{\"value\":{\"continue\":true,\"progress\":-5,\"total\":2147483647,\"locator\":\"\"}}}",
        begin + "\"error\":7}",
        begin + "\"error\":{\"code\":-1,\"message\":\"no\"},\"result\":{\"value\":null}}",
        begin + "\"error\":{\"code\":-32000,\"message\":\"no\"}}",
        "{\"jsonrpc\":\"2.0\",\"id\":\"" + id + "\",\"result\":{\"value\":null}}",
        "[]",
        "",
        begin + "\"result\":" + std::string(100000, '[') + "}"};
    return MakeFrame(forms.at(mPlan.GetAmount() % forms.size()));
}

}  // namespace zelfaults

// What stands before the functions of the system, for this program and the libraries that it is linked with.
#pragma GCC visibility push(default)
extern "C" {

ssize_t send(int socket, const void* bytes, size_t size, int flags) {
    return zelfaults::ReplyFaults::GetInstance().Send(socket, std::string(static_cast<const char*>(bytes), size),
                                                      flags);
}

ssize_t sendmsg(int socket, const msghdr* message, int flags) {
    std::string frame;
    for (std::size_t i = 0; i < message->msg_iovlen; ++i)
        frame.append(static_cast<const char*>(message->msg_iov[i].iov_base), message->msg_iov[i].iov_len);
    return zelfaults::ReplyFaults::GetInstance().Send(socket, frame, flags);
}

}  // extern "C"
#pragma GCC visibility pop

namespace {

// Before main, so that what is counted from the start is.
const zelfaults::ReplyFaults& gAtStart = zelfaults::ReplyFaults::GetInstance();

}  // namespace
