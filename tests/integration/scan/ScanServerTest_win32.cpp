#include <windows.h>

#include <gmock/gmock.h>

#include "ProcessList.h"
#include "ScanServerStage.h"
#include "support/ChildRole_win32.h"

namespace zeltests {

using zelaudiofilterhostui::ScannerProcess;

namespace {

constexpr UINT kTurnedAway = 10;
constexpr UINT kServed = 11;
constexpr UINT kNotConnected = 12;

/// Somebody who has not started the scanner.
const ChildRole gStranger("stranger", [](const std::string&) {
    RawClient client;
    const bool isConnected = client.Connect();
    const bool isServed = isConnected && !client.Call("Connect", "[\"/a\",\"/b\",\"/c\",\"/a.scan\"]").empty();
    TerminateProcess(GetCurrentProcess(), !isConnected ? kNotConnected : isServed ? kServed : kTurnedAway);
});

/// Somebody who starts a scanner and waits. The argument: the scanner's path, and what to send it, with a line end
/// between.
const ChildRole gHost("host", [](const std::string& argument) {
    const std::size_t end = argument.find('\n');
    void* const process =
        ScannerProcess::Start(zelcore::filesupport::File(zelcore::utility::UTF8to16(argument.substr(0, end))));
    const std::string ready = argument.substr(argument.rfind('\n') + 1);
    RawClient client;
    const bool isServed = process != nullptr && client.Connect() &&
                          !client.Call("Connect", argument.substr(end + 1, argument.rfind('\n') - end - 1)).empty();
    if (isServed) WriteFile(ready, "");
    Sleep(INFINITE);
});

}  // namespace

class ScanServerWindowsTest : public ScanServerTest {};

TEST_F(ScanServerWindowsTest, TurnsAwayAClientOfAnotherProcessAndServesItsOwn) {
    {
        const ChildRole::Process stranger = gStranger.Start("");
        ASSERT_EQ(WaitForSingleObject(stranger.Get(), 20000), WAIT_OBJECT_0);
        DWORD code = 0;
        GetExitCodeProcess(stranger.Get(), &code);
        EXPECT_EQ(code, kTurnedAway);
    }
    RawClient own;
    ASSERT_TRUE(own.Connect());
    EXPECT_THAT(own.Call("Connect", GetConnectParameters()), testing::HasSubstr("\"result\""));
}

TEST_F(ScanServerWindowsTest, EndsWhenTheHostDies) {
    ScannerProcess::Terminate(mProcess);
    mProcess = nullptr;
    ASSERT_TRUE(WaitFor([] { return ProcessList::CountScanners() == 0; }));
    {
        const zelcore::filesupport::File scanner(
            zelcore::filesupport::Dir::AppDir(),
            zelcore::utility::AsciiToUTF16(zelaudiofilterhost::scanprotocol::kScannerFileName));
        const ChildRole::Process host =
            gHost.Start(ToBytes(scanner.FullPath()) + "\n" + GetConnectParameters() + "\n" + GetPath("ready"));
        ASSERT_TRUE(WaitFor([this] { return Exists(GetPath("ready")); }));
        EXPECT_EQ(ProcessList::CountScanners(), 1u);
    }
    EXPECT_TRUE(WaitFor([] { return ProcessList::CountScanners() == 0; }));
}

}  // namespace zeltests
