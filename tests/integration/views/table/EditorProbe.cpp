#include "EditorProbe.h"

#include <cmath>

#include <QElapsedTimer>
#include <QTimer>
#include <zelcore/Utf.h>

#include "integration/editors/EditorStage.h"
#include "support/windows/Leftovers.h"

using namespace zelaudiofilterhost;

namespace zeltests {

namespace {

constexpr int kTurnMilliseconds = 40;
constexpr int kTurnsInASecond = 25;

TechnologyType GetTechnology(const std::string& path) {
    return path.ends_with(".vst3") ? kTechnologyVST3 : kTechnologyVST;
}

std::string ToText(const zelcore::ustring& text) {
    const zelcore::utf8string utf8 = zelcore::utility::UTF16to8(text);
    return std::string(utf8.begin(), utf8.end());
}

}  // namespace

EditorProbe::EditorProbe(const std::string& path, const std::string& resultFile, const std::string& picture)
    : mPath(path), mTechnology(GetTechnology(path)), mPicture(picture), mResult(resultFile) {}

void EditorProbe::Run() {
    Say("doing", "loading");
    const ViewStage::FilterPtr filter = ViewStage::LoadFilter(mTechnology, mPath);
    Say("name", ToText(filter->GetName()));
    Say("editor", filter->HasEditor());
    if (!filter->HasEditor()) return;
    QElapsedTimer time;
    time.start();
    mStage.Show(filter);
    if (!ShowAndDraw()) return;
    Say("doing", "idling");
    IdleForASecond();
    Say("idled", 1);
    if (!mPicture.empty()) Say("picture", mStage.Grab().save(QString::fromStdString(mPicture)));
    Close();
    Say("closed", 1);
    const Count before = CountNow();
    if (!ShowAndDraw()) return;
    Close();
    Say("again", 1);
    Say("milliseconds", static_cast<long>(time.elapsed()));
    Say("loop", static_cast<long>(mStage.GetLoop().GetCount()));
    SayLeft("left", before);
    CountUnderABareWindow();
    Say("doing", "unloading");
}

EditorProbe::Count EditorProbe::CountNow() {
    return {static_cast<long>(CountWindows()), static_cast<long>(CountDescriptors())};
}

void EditorProbe::Say(const std::string& key, const std::string& value) { mResult << key << '=' << value << std::endl; }

bool EditorProbe::ShowAndDraw() {
    Say("doing", "opening");
    const bool isOpen = mStage.Open();
    Say("opened", isOpen);
    if (!isOpen) return false;
    Say("doing", "drawing");
    const bool isDrawn = mStage.RunUntilDrawn();
    Say("drew", isDrawn);
    // As it is now: some find their size only while they draw.
    const zelcore::geom::RectF rect = mStage.GetView().UI_GetLocalRectF(true);
    Say("size", std::to_string(std::lround(rect.width)) + "x" + std::to_string(std::lround(rect.height)));
    return true;
}

void EditorProbe::IdleForASecond() {
    int turns = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&turns] { ++turns; });
    timer.start(kTurnMilliseconds);
    ViewStage::RunUntil([&turns] { return turns >= kTurnsInASecond; });
}

void EditorProbe::Close() {
    Say("doing", "closing");
    mStage.Close();
    // What the window system has been asked for but has not done yet is not left over.
    for (int round = 0; round < 3; ++round) ViewStage::RunUntil([count = 0]() mutable { return ++count > 5; });
}

void EditorProbe::CountUnderABareWindow() {
    Say("doing", "opening under a bare window");
    mStage.Clear();
    EditorStage stage;
    stage.Load(mTechnology, mPath);
    const auto openAndClose = [&stage] {
        stage.Open();
        stage.RunUntilDrawn();
        stage.Close();
        ViewStage::RunUntil([count = 0]() mutable { return ++count > 15; });
    };
    openAndClose();
    const Count before = CountNow();
    openAndClose();
    SayLeft("bare", before);
}

void EditorProbe::SayLeft(const std::string& prefix, const Count& before) {
    const Count now = CountNow();
    Say(prefix + "windows", now.windows - before.windows);
    Say(prefix + "files", now.descriptors - before.descriptors);
}

}  // namespace zeltests
