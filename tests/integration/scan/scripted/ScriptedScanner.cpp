// A scanner process that does what a test tells it to.
//
// ZEL_SCRIPT_FOLDER names a folder. Each start appends a line to "launches" there and runs "script.<n>" of its number
// (from 1), or "script" where that is missing. A script is one action a line:
//
//   exit CODE         end at once
//   late SECONDS      wait before listening
//   listen            take the port and one client
//   listen-and-drop   take clients and close each connection at once, until this process is ended
//   then, one line a request, in the order of the requests:
//   value JSON        reply with that value
//   error CODE TEXT   reply with an error
//   result JSON       write what the JSON text holds to the result file and reply with null
//   close             close the connection and end
//   crash             die of touching memory that is not there
//   hang              do nothing until this process is ended
//   bytes HEX         send these bytes as they are, and go on with the next line for the same request
//   wait NAME         wait for the file NAME in the folder, and go on with the next line for the same request
//   bytewise          from here on, send replies byte by byte
//   twice JSON        reply with that value, twice
//
// Every request is logged to "log" as it came, one a line.
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <boost/json.hpp>

#include "OwnProcess.h"

namespace {

using namespace zeltests::scripted;
using boost::asio::ip::tcp;
namespace fs = std::filesystem;
namespace json = boost::json;

constexpr unsigned short kPort = 18201;
constexpr std::chrono::seconds kTimeForPort(8);
constexpr int kExitNoPort = 3;
constexpr int kExitBadScript = 7;

fs::path InFolder(const std::string& name) { return fs::path(std::getenv("ZEL_SCRIPT_FOLDER")) / name; }

void AppendLine(const std::string& name, const std::string& line) {
    std::ofstream(InFolder(name), std::ios::binary | std::ios::app) << line + "\n";
}

std::vector<std::string> ReadLines(const fs::path& path) {
    std::vector<std::string> lines;
    std::ifstream stream(path, std::ios::binary);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

std::vector<std::string> ReadScript() {
    AppendLine("launches", std::to_string(GetOwnId()));
    const fs::path own = InFolder("script." + std::to_string(ReadLines(InFolder("launches")).size()));
    return ReadLines(fs::exists(own) ? own : InFolder("script"));
}

void SleepFor(double seconds) { std::this_thread::sleep_for(std::chrono::duration<double>(seconds)); }

/// Nothing, until this process is ended or the test has gone.
[[noreturn]] void SleepForEver() {
    while (!IsStarterGone()) SleepFor(0.1);
    EndNow(0);
}

std::string FromHex(const std::string& digits) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    }
    return bytes;
}

class Connection {
public:
    explicit Connection(tcp::socket peer) : mPeer(std::move(peer)) { mPeer.set_option(tcp::no_delay(true)); }

    /// The next request. Without one any more, the process ends.
    json::value Receive() {
        std::array<unsigned char, 4> head = {};
        ReceiveInto(boost::asio::buffer(head));
        const std::size_t size = head[0] | (std::size_t(head[1]) << 8) | (std::size_t(head[2]) << 16);
        std::string body(size, '\0');
        ReceiveInto(boost::asio::buffer(body));
        AppendLine("log", body);
        json::value request = json::parse(body);
        if (request.at("method").as_string().ends_with(".Connect")) {
            mResultPath = std::string(request.at("params").at(3).as_string());
        }
        return request;
    }

    void Send(const json::value& message) {
        const std::string body = json::serialize(message);
        std::string bytes;
        for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>((body.size() >> shift) & 0xFF);
        bytes += body;
        if (!mIsBytewise) return SendBytes(bytes);
        for (const char byte : bytes) SendBytes(std::string(1, byte));
    }
    void SendBytes(const std::string& bytes) {
        boost::system::error_code error;
        boost::asio::write(mPeer, boost::asio::buffer(bytes), error);
        if (error) EndNow(1);
    }
    void SendBytewise() { mIsBytewise = true; }

    void WriteResult(const std::string& text) {
        const auto* const path = reinterpret_cast<const char8_t*>(mResultPath.c_str());
        std::ofstream(fs::path(path), std::ios::binary | std::ios::trunc) << text;
    }
    void Close() { mPeer.close(); }

private:
    void ReceiveInto(const boost::asio::mutable_buffer& buffer) {
        boost::system::error_code error;
        boost::asio::read(mPeer, buffer, error);
        if (error) EndNow(0);
    }

    tcp::socket mPeer;
    bool mIsBytewise = false;
    std::string mResultPath;
};

std::unique_ptr<tcp::acceptor> Listen(boost::asio::io_context& context) {
    const auto deadline = std::chrono::steady_clock::now() + kTimeForPort;
    const tcp::endpoint place(boost::asio::ip::address_v4::loopback(), kPort);
    for (;;) {
        auto acceptor = std::make_unique<tcp::acceptor>(context, place.protocol());
        acceptor->set_option(tcp::acceptor::reuse_address(kAsksForLingeringPort));
        boost::system::error_code error;
        acceptor->bind(place, error);
        if (!error) {
            acceptor->listen(4);
            return acceptor;
        }
        if (std::chrono::steady_clock::now() > deadline) EndNow(kExitNoPort);
        SleepFor(0.02);
    }
}

[[noreturn]] void DropEverybody(boost::asio::io_context& context) {
    const auto acceptor = Listen(context);
    for (;;) acceptor->accept().close();
}

/// Acts on one line; true when the line was the answer to the request.
bool Answer(Connection& connection, const json::value& request, const std::string& word, const std::string& rest) {
    json::object reply = {{"jsonrpc", "2.0"}, {"id", request.at("id")}};
    if (word == "value" || word == "twice") {
        reply["result"] = {{"value", json::parse(rest)}};
        connection.Send(reply);
        if (word == "twice") connection.Send(reply);
    } else if (word == "error") {
        const std::size_t space = rest.find(' ');
        reply["error"] = {{"code", std::stoi(rest.substr(0, space))}, {"message", rest.substr(space + 1)}};
        connection.Send(reply);
    } else if (word == "result") {
        connection.WriteResult(std::string(json::parse(rest).as_string()));
        reply["result"] = {{"value", nullptr}};
        connection.Send(reply);
    } else if (word == "close") {
        connection.Close();
        EndNow(0);
    } else if (word == "crash") {
        Crash();
    } else if (word == "hang") {
        SleepForEver();
    } else if (word == "bytes") {
        connection.SendBytes(FromHex(rest));
        return false;
    } else if (word == "wait") {
        while (!fs::exists(InFolder(rest))) SleepFor(0.002);
        return false;
    } else if (word == "bytewise") {
        connection.SendBytewise();
        return false;
    } else {
        EndNow(kExitBadScript);
    }
    return true;
}

void Run() {
    boost::asio::io_context context;
    std::unique_ptr<Connection> connection;
    json::value request;
    for (const std::string& line : ReadScript()) {
        const std::string word = line.substr(0, line.find(' '));
        const std::string rest = word.size() == line.size() ? std::string() : line.substr(word.size() + 1);
        if (word == "exit") {
            EndNow(std::stoi(rest));
        } else if (word == "late") {
            SleepFor(std::stod(rest));
        } else if (word == "listen") {
            connection = std::make_unique<Connection>(Listen(context)->accept());
        } else if (word == "listen-and-drop") {
            DropEverybody(context);
        } else {
            if (request.is_null()) request = connection->Receive();
            if (Answer(*connection, request, word, rest)) request = nullptr;
        }
    }
    while (connection) connection->Receive();
}

}  // namespace

int main() {
    try {
        Run();
    } catch (const std::exception& error) {
        AppendLine("log", error.what());
        EndNow(kExitBadScript);
    }
}
