#include <cstring>
#include <string>

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

int ScanByHand(int argumentCount, char** arguments) {
    const int output = ProcessSupport::PrepareManual();
    if (argumentCount != 2 || arguments[1][0] == '-') {
        ProcessSupport::Write(output, kUsage);
        return argumentCount == 2 && std::strcmp(arguments[1], "--help") == 0 ? protocol::kScannerExitDone
                                                                              : protocol::kScannerExitUsage;
    }
    const zelcore::threads::SimpleMainLoop loop;
    bool succeeded = false;
    ProcessSupport::Write(output, DescribeForPeople(arguments[1], succeeded));
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
    if (argc == 1) Serve();
    ProcessSupport::EndNow(ScanByHand(argc, argv));
}
