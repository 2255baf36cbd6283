#pragma once

#include <chrono>
#include <string>

#include <zelaudiofilterhost/ScanProtocol.h>
#include <zelcore/File.h>
#include <zelcore/Utf.h>

#include "RawClient.h"
#include "scan/ScannerProcess.h"
#include "ScanFixture.h"
#include "support/WaitFor.h"

namespace zeltests {

/// The real scanner process, spoken to directly.
class ScanServerTest : public ScanFixture {
protected:
    ScanServerTest() {
        UseRealScanner();
        Start();
    }
    ~ScanServerTest() override {
        if (mProcess) zelaudiofilterhostui::ScannerProcess::Terminate(mProcess);
    }

    static void* StartScanner() {
        return zelaudiofilterhostui::ScannerProcess::Start(zelcore::filesupport::File(
            zelcore::filesupport::Dir::AppDir(),
            zelcore::utility::AsciiToUTF16(zelaudiofilterhost::scanprotocol::kScannerFileName)));
    }

    void Start() {
        mProcess = StartScanner();
        ASSERT_TRUE(mProcess);
    }

    bool EndsSoon() {
        return WaitFor([this] { return !zelaudiofilterhostui::ScannerProcess::IsRunning(mProcess); },
                       std::chrono::seconds(10));
    }

    std::string GetConnectParameters() const {
        const std::string registry = GetPath("catalogue.xml");
        return "[\"" + registry + "\",\"" + GetPath("bans.xml") + "\",\"" + GetPath("permanent.xml") + "\",\"" +
               registry + ".scan\"]";
    }

    void* mProcess = nullptr;
};

}  // namespace zeltests
