// What a remote call costs beside the bare bytes: round trips of one call through RPCClient and RPCServer, and of the
// very same frames through two sockets, over loopback and in one run. The last lines say how many times as long.

#include <algorithm>
#include <cstdio>
#include <future>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>
#include <boost/make_shared.hpp>

#include <zelcore/Serialization.h>
#include <zelmarshal/RPCClient.h>
#include <zelmarshal/RPCServer.h>
#include <zeltransport/SocketTransport.h>

#include "BarePingPong.h"
#include "support/Table.h"

namespace {

using zelcore::serialization::Array;
using zelcore::serialization::BuildCall;
using zelcore::serialization::Variant;

constexpr int kRoundTripsPerRun = 500;
constexpr int kRepetitions = 11;
constexpr char kMethod[] = "com.example.benchmark.GetScanInfo";

/// A connected client and server. The reply is as large as those that a scan asks for most.
class RpcPair {
public:
    RpcPair()
        : mServerTransport(zeltransport::SocketTransport::Create(1)),
          mClientTransport(zeltransport::SocketTransport::Create(1)) {
        mServer.RegisterMethod(kMethod, [](const Array&, const zelmarshal::RPCServer::Answer& answer) {
            boost::any info;
            zelcore::serialization::SetInObject(
                info, "locator", zelcore::utf8string("VST3|/usr/lib/vst3/Some Plug-in.vst3/Contents|1234"));
            zelcore::serialization::SetInObject(info, "subcomponent", zelcore::utf8string("Some Plug-in"));
            zelcore::serialization::SetInObject(info, "progress", boost::int32_t(17));
            zelcore::serialization::SetInObject(info, "total", boost::int32_t(239));
            zelcore::serialization::SetInObject(info, "continue", true);
            answer.Reply(info);
        });
        std::promise<unsigned short> port;
        std::promise<boost::shared_ptr<zeltransport::Session>> accepted;
        mServerTransport->ServerStart(
            0, zeltransport::ServerOptions(),
            [&](const boost::shared_ptr<zeltransport::Session>& session) { accepted.set_value(session); }, {},
            [&] { port.set_value(mServerTransport->GetListeningPort()); });
        mSession = mClientTransport->ClientStart("127.0.0.1", port.get_future().get());
        mServerSession = accepted.get_future().get();
    }

    void Serve() {
        mServer.Serve(mServerSession, {});
        mClient = std::make_unique<zelmarshal::RPCClient>(mSession, "ClientUnknown");
    }
    /// Each call goes out from the reply handler of the one before.
    void Run(int count) {
        std::promise<void> done;
        Call(count, done);
        done.get_future().wait();
    }

    /// The frames of one call as they go over the wire.
    std::pair<std::string, std::string> RecordFrames();

private:
    void Call(int count, std::promise<void>& done) {
        if (count == 0) return done.set_value();
        mClient->SendRequest(
            BuildCall(kMethod, Array()),
            [this, count, &done](const boost::shared_ptr<boost::any>&, int) { Call(count - 1, done); },
            [](int code, const std::string& message) {
                std::fprintf(stderr, "The call failed: %d %s\n", code, message.c_str());
                std::abort();
            },
            0);
    }

    boost::shared_ptr<zeltransport::SocketTransport> mServerTransport;
    boost::shared_ptr<zeltransport::SocketTransport> mClientTransport;
    boost::shared_ptr<zeltransport::Session> mServerSession;
    boost::shared_ptr<zeltransport::Session> mSession;
    zelmarshal::RPCServer mServer;
    std::unique_ptr<zelmarshal::RPCClient> mClient;
};

std::string WithLength(const std::string& frame) {
    std::string bytes;
    for (unsigned shift = 0; shift < 32; shift += 8) bytes.push_back(static_cast<char>((frame.size() >> shift) & 0xFF));
    return bytes + frame;
}

std::pair<std::string, std::string> RpcPair::RecordFrames() {
    std::promise<std::string> request, reply;
    mServerSession->SetProtocolHandlers(
        [&](const char* bytes, std::size_t size) { request.set_value(std::string(bytes, size)); }, {});
    mClient = std::make_unique<zelmarshal::RPCClient>(mSession, "ClientUnknown");
    mClient->SendRequest(BuildCall(kMethod, Array()), {}, {}, 0);
    std::string ping = request.get_future().get();
    mClient.reset();
    mSession->SetProtocolHandlers(
        [&](const char* bytes, std::size_t size) { reply.set_value(std::string(bytes, size)); }, {});
    mServer.Serve(mServerSession, {});
    mSession->Send(ping);
    std::string pong = reply.get_future().get();
    // Most calls of a run have an id of about this many digits.
    constexpr char kFirstId[] = "\"id\":1";
    for (std::string* frame : {&ping, &pong})
        frame->replace(frame->find(kFirstId), sizeof kFirstId - 1, "\"id\":12345");
    return {WithLength(ping), WithLength(pong)};
}

void RemoteCall(benchmark::State& state) {
    RpcPair pair;
    pair.Serve();
    for (auto _ : state) pair.Run(kRoundTripsPerRun);
    state.SetItemsProcessed(state.iterations() * kRoundTripsPerRun);
}

void BareBytes(benchmark::State& state) {
    const auto frames = RpcPair().RecordFrames();
    zelbench::BarePingPong bare(frames.first, frames.second);
    for (auto _ : state) bare.Run(kRoundTripsPerRun);
    state.SetItemsProcessed(state.iterations() * kRoundTripsPerRun);
}

BENCHMARK(BareBytes)->UseRealTime()->Unit(benchmark::kMicrosecond)->Repetitions(kRepetitions);
BENCHMARK(RemoteCall)->UseRealTime()->Unit(benchmark::kMicrosecond)->Repetitions(kRepetitions);

/// Prints as usual, and keeps what the ratio is made of.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration) {
                mTimes[run.run_name.function_name].push_back(run.GetAdjustedRealTime() / kRoundTripsPerRun);
            }
        }
        benchmark::ConsoleReporter::ReportRuns(runs);
    }
    void PrintRatio() {
        PrintRatio("median", 0.5);
        // On a machine that is busy with something else this one says more.
        PrintRatio("fastest", 0);
        const double bare = GetTime("BareBytes", 0.5);
        const double call = GetTime("RemoteCall", 0.5);
        if (bare != 0 && call != 0) zelbench::AddTableRow("remote call and reply", "us", call, "bare Asio", bare);
    }

private:
    void PrintRatio(const char* what, double quantile) {
        const double bare = GetTime("BareBytes", quantile);
        const double call = GetTime("RemoteCall", quantile);
        if (bare == 0 || call == 0) return;
        std::printf("One round trip, %s of %d: bare bytes %.2f us, remote call %.2f us, ratio %.2f\n", what,
                    kRepetitions, bare, call, call / bare);
    }
    double GetTime(const std::string& name, double quantile) {
        std::vector<double>& times = mTimes[name];
        if (times.empty()) return 0;
        std::sort(times.begin(), times.end());
        return times[static_cast<std::size_t>(quantile * static_cast<double>(times.size()))];
    }
    std::map<std::string, std::vector<double>> mTimes;
};

}  // namespace

int main(int argc, char** argv) {
    // The two take turns, so that what else the machine does falls on both alike.
    std::vector<char*> arguments(argv, argv + argc);
    char interleave[] = "--benchmark_enable_random_interleaving=true";
    arguments.insert(arguments.begin() + 1, interleave);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.PrintRatio();
    return 0;
}
