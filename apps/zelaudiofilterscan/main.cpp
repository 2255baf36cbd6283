#include <string>
#include <vector>

#include <boost/bind/bind.hpp>
#include <zelaudiofilterhost/ScanProtocol.h>
#include <zelcore/SimpleMainLoop.h>
#include <zeltransport/SocketTransport.h>

#include "ManualScan.h"
#include "ProcessSupport.h"
#include "ScanServer.h"
#include "Watchdog.h"

using namespace zelaudiofilterscan;
namespace protocol = zelaudiofilterhost::scanprotocol;

namespace {

constexpr char kUsage[] =
    "Usage: zelaudiofilterscan.exe [FILE]\n"
    "Without an argument, serves the scan client that started it. With one, prints what the plug-in FILE is.\n";

int ScanByHand(const std::vector<std::string>& arguments) {
    const int output = ProcessSupport::PrepareManual();
    if (arguments.size() != 1 || arguments.front().starts_with('-')) {
        ProcessSupport::Write(output, kUsage);
        const bool isAskedFor = arguments.size() == 1 && arguments.front() == "--help";
        return isAskedFor ? protocol::kScannerExitDone : protocol::kScannerExitUsage;
    }
    const zelcore::threads::SimpleMainLoop loop;
    bool succeeded = false;
    ProcessSupport::Write(output, DescribeForPeople(arguments.front(), succeeded));
    return succeeded ? protocol::kScannerExitDone : protocol::kScannerExitFailed;
}

[[noreturn]] void Serve() {
    ProcessSupport::PrepareServer();
    zelcore::threads::SimpleMainLoop loop;
    Watchdog watchdog(Watchdog::ReadLimits());
    ScanServer server(watchdog);
    const boost::shared_ptr<zeltransport::SocketTransport> transport = zeltransport::SocketTransport::Create(1);
    zeltransport::ServerOptions options;
    options.clientProcess = ProcessSupport::GetStarter();
    transport->ServerStart(protocol::kScannerPort, options,
                           boost::bind(&ScanServer::Serve, &server, boost::placeholders::_1),
                           boost::bind(&ProcessSupport::EndNow, protocol::kScannerExitNoPort),
                           zeltransport::SocketTransport::ListeningHandler());
    loop.Run();
    // Nothing quits the loop: the process ends when its client goes.
    ProcessSupport::EndNow(protocol::kScannerExitDone);
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments = ProcessSupport::GetArguments(argc, argv);
    if (arguments.empty()) Serve();
    ProcessSupport::EndNow(ScanByHand(arguments));
}
