#pragma once

/// What the scan client and the scanner process agree on: JSON-RPC over one loopback connection, one request at a time.
///
/// The client connects, says where its files are, hands over the list of plug-ins, and then alternates between asking
/// which plug-in is next and having it scanned, until none is left. A connection that is lost while a plug-in is being
/// scanned means that the plug-in took the scanner down.
namespace zelaudiofilterhost {
namespace scanprotocol {

/// File name of the scanner process in the application's folder, on every platform.
constexpr char kScannerFileName[] = "zelaudiofilterscan.exe";
constexpr char kScannerAddress[] = "127.0.0.1";
constexpr unsigned short kScannerPort = 18201;
/// The name under which the client introduces itself with each request.
constexpr char kClientName[] = "ClientUnknown";
/// The scanner leaves each plug-in's description in the file of the catalogue's path with this behind it.
constexpr char kResultFileSuffix[] = ".scan";

/// Texts: catalogue file, user ban list, permanent ban list, result file, as full paths. The reply's content is not
/// used.
constexpr char kConnect[] = "com.morva.zelaudiofilterscan.Connect";
/// An array of texts: the locators to scan, in order. The reply's content is not used.
constexpr char kBeginScanForPlugins[] = "com.morva.zelaudiofilterscan.BeginScanForPlugins";
/// No arguments; replies with an object of the keys below.
constexpr char kGetScanInfo[] = "com.morva.zelaudiofilterscan.GetScanInfo";
/// No arguments; when the reply comes the result file describes the plug-in just scanned.
constexpr char kScanOneEntity[] = "com.morva.zelaudiofilterscan.ScanOneEntity";
/// No arguments; ends a scan early. Our own client ends the process instead.
constexpr char kEndScan[] = "com.morva.zelaudiofilterscan.EndScan";

constexpr char kKeyLocator[] = "locator";            ///< text: the plug-in that is next; empty when there is none
constexpr char kKeySubcomponent[] = "subcomponent";  ///< text to show behind the plug-in's name
constexpr char kKeyProgress[] = "progress";          ///< 32-bit integer: how many plug-ins this scanner has reached
constexpr char kKeyTotal[] = "total";                ///< 32-bit integer: how many plug-ins this scanner will scan
constexpr char kKeyContinue[] = "continue";          ///< bool: whether there is a plug-in to scan; absent means no

/// How the scanner process ends when no plug-in ended it.
enum ScannerExitCode {
    kScannerExitDone = 0,      ///< its client has gone
    kScannerExitUsage = 2,     ///< started with arguments it does not know
    kScannerExitNoPort = 3,    ///< somebody else kept the port
    kScannerExitNoClient = 4,  ///< nobody connected in time
    kScannerExitFailed = 5,    ///< run by hand: the file is no working plug-in
    kScannerExitHang = 90,     ///< one plug-in took longer than the limit
    kScannerExitMemory = 91    ///< one plug-in took more memory than the limit
};

/// Environment variables that change the scanner's limits for one plug-in.
constexpr char kTimeLimitVariable[] = "ZEL_SCANNER_TIMEOUT_SECONDS";
constexpr char kMemoryLimitVariable[] = "ZEL_SCANNER_MEMORY_MB";
constexpr int kDefaultTimeLimitSeconds = 30;
constexpr int kDefaultMemoryLimitMegabytes = 4096;

}  // namespace scanprotocol
}  // namespace zelaudiofilterhost
