#include "support/SoundServer.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "support/Environment.h"
#include "support/WaitFor.h"

namespace zeltests {

namespace {

const char* const kServer = "/usr/bin/pulseaudio";
const char* const kControl = "/usr/bin/pactl";
const char* const kRecorder = "/usr/bin/parec";

bool IsInstalled() {
    for (const char* const program : {kServer, kControl, kRecorder}) {
        if (!std::filesystem::exists(program)) return false;
    }
    return true;
}

}  // namespace

SoundServer::SoundServer() {
    const std::string socket = mFolder.Path("socket");
    SetVariable("PULSE_SERVER", ("unix:" + socket).c_str());
    if (!IsInstalled()) return;
    mEnvironment = {"HOME=" + mFolder.GetPath(), "XDG_RUNTIME_DIR=" + mFolder.GetPath(), "XDG_CONFIG_HOME="};
    auto program = std::make_unique<Program>(
        mFolder.GetPath(),
        std::vector<std::string>{kServer, "-n", "--daemonize=no", "--system=false", "--use-pid-file=no",
                                 "--realtime=no", "--high-priority=no", "--exit-idle-time=-1",
                                 "--load=module-native-protocol-unix auth-anonymous=1 socket=" + socket},
        mEnvironment);
    if (WaitFor([&] { return Control({"info"}) == 0 || !program->IsRunning(); }) && program->IsRunning())
        mProgram = std::move(program);
}

SoundServer::~SoundServer() { SetVariable("PULSE_SERVER", nullptr); }

void SoundServer::AddDevice(const std::string& name) {
    EXPECT_EQ(Control({"load-module", "module-null-sink", "sink_name=" + name, "rate=48000", "format=float32le"}), 0);
    EXPECT_EQ(Control({"set-default-sink", name}), 0);
}

void SoundServer::RemoveDevices() { EXPECT_EQ(Control({"unload-module", "module-null-sink"}), 0); }

std::unique_ptr<Program> SoundServer::Record(const std::string& device) {
    return std::make_unique<Program>(
        mFolder.GetPath(),
        std::vector<std::string>{kRecorder, "--device=" + device + ".monitor", "--raw", "--format=float32le",
                                 "--channels=2", "--rate=48000", "--latency-msec=20"},
        mEnvironment);
}

int SoundServer::Control(const std::vector<std::string>& arguments) {
    std::vector<std::string> all = {kControl};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return Program(mFolder.GetPath(), all, mEnvironment).Wait();
}

}  // namespace zeltests
