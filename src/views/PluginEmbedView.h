#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include <boost/bind/bind.hpp>
#include <boost/intrusive_ptr.hpp>
#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>
#include <zelaudiofilterhost/AudioFilter.h>
#include <zelaudiofilterhost/AudioFilterEditor.h>
#include <zelui/OS_ViewContainer.h>
#include <zelui/Theme.h>
#include <zelui/UI_NodeManager.h>
#include <zelui/UI_OSSubViewAdapter.h>

#include "views/PlatformViewSize.h"

namespace zelaudiofilterhostui {

// The editor view's own, and nobody else's: whoever includes this gets classes that no other file can name.
namespace {

/// Functions that the toolkit keeps copies of. Emptied when the list goes, so that what the toolkit still holds calls
/// nothing.
class InstalledFunctions {
public:
    typedef boost::shared_ptr<zelui::ui::ThemeChangedFunction> FunctionPtr;

    explicit InstalledFunctions(bool emptyThem) : mEmptyThem(emptyThem) {}
    ~InstalledFunctions() {
        if (!mEmptyThem) return;
        for (const FunctionPtr& function : mFunctions) function->clear();
    }
    InstalledFunctions(const InstalledFunctions&) = delete;
    InstalledFunctions& operator=(const InstalledFunctions&) = delete;

    void Add(const FunctionPtr& function) { mFunctions.push_back(function); }

private:
    std::vector<FunctionPtr> mFunctions;
    const bool mEmptyThem;
};

/// The place of a plug-in's own editor: a platform window in which the editor is open from AttachEditor until the view
/// goes or another one attaches the same editor, as large as the editor says.
class PluginEmbedView : public zelui::ui::UI_OSSubViewAdapter {
public:
    typedef boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> FilterPtr;
    typedef boost::intrusive_ptr<zelaudiofilterhost::AudioFilterEditor> EditorPtr;

    /// Without a filter there is no window for an editor.
    PluginEmbedView(const FilterPtr& filter, const EditorPtr& editor)
        : mFilter(filter),
          mEditor(editor),
          mTimerID(0),
          mTimerInstalled(false),
          mIsOpen(false),
          mNextOpen(nullptr),
          mInstalledFunctions(true) {
        if (mFilter) AddPlatformWindow();
        const auto themeChanged =
            boost::make_shared<zelui::ui::ThemeChangedFunction>(boost::bind(&PluginEmbedView::PassThemeOn, this));
        mInstalledFunctions.Add(themeChanged);
        zelui::ui::InstallThemeChangedFunction(themeChanged);
    }

    /// Opens the editor, and takes it away from the view that has it open. The view stands in a window by now. Plug-ins
    /// run the event loop while they open; whoever has the view detached there, or lets go of it, has the editor
    /// closed.
    void AttachEditor() {
        if (!mFilter || !mEditor) return;
        const boost::intrusive_ptr<PluginEmbedView> self(this);
        mEditor->SetContentScale(UI_GetPixelScale());
        // Of an editor that did not open there is nothing to see, and nobody to be given a turn.
        if (!OpenEditor()) return;
        try {
            PassThemeOn();
            SyncSizeFromEditor();
            if (mIsOpen) StartTimer();
        } catch (...) {
            DetachEditor();
            throw;
        }
    }

    /// Closes the editor, if it was opened here; harmless again.
    void DetachEditor() {
        StopTimer();
        if (!mIsOpen) return;
        SetOpen(false);
        mEditor->CloseView();
    }

    /// Takes the size that the editor has now.
    void SyncSizeFromEditor() {
        if (!mEditor) return;
        // It is the plug-in that is asked, and whoever it lets run may let go of the view.
        const boost::intrusive_ptr<PluginEmbedView> self(this);
        const zelcore::geom::Rect wanted = mEditor->GetViewRect();
        zelcore::geom::RectF rect = UI_GetLocalRectF(true);
        rect.width = static_cast<float>(wanted.width);
        rect.height = static_cast<float>(wanted.height);
        UI_SetLocalRectF(rect);
    }

    /// What shows where the editor's window does not cover the view: opaque mid grey.
    void UI_Draw(zelui::drawbot::Drawbot& drawbot) override {
        drawbot.FillRect(UI_GetLocalRectF(false), {0.5f, 0.5f, 0.5f, 1.0f});
    }

    /// The id is not compared, on purpose: there is only the one timer.
    bool UI_DoTimerNotify(long) override {
        if (mEditor) mEditor->Idle();
        return true;
    }

protected:
    ~PluginEmbedView() override { DetachEditor(); }

    void UI_DisabledStateChanged() override {
        UI_OSSubViewAdapter::UI_DisabledStateChanged();
        RepaintNow(*this);
    }

    void UI_NodeChanged(int change) override {
        UI_OSSubViewAdapter::UI_NodeChanged(change);
        SyncPlatformViewSize(*this, change);
        // A host that takes the view away without closing it first: the editor's window is about to go.
        const bool leaves = change == zelui::ui::kNodePlaceChanged && !UI_IsInWindow();
        if (leaves || change == zelui::ui::kNodeWindowGoing) DetachEditor();
        // The editor tells the size that it then has by itself.
        if (change == zelui::ui::kNodeScaleChanged && mIsOpen) mEditor->SetContentScale(UI_GetPixelScale());
    }

private:
    /// In seconds.
    static constexpr float kIdlePeriod = 0.04f;

    void AddPlatformWindow() {
        const boost::intrusive_ptr<zelui::ui::OS_ViewContainer> window(new zelui::ui::OS_ViewContainer(false));
        window->UI_Show(true);
        GetOSViewContainer()->ChildPushBack(window);
    }

    /// Whether it is open now, and is to stay so.
    bool OpenEditor() {
        const EditorPtr editor = mEditor;
        PluginEmbedView* const former = FindViewOf(*editor);
        if (former != nullptr && former != this) former->LoseEditor();
        SetOpen(true);
        bool opened = false;
        try {
            opened = editor->OpenView(GetOSView()->GetPlatformWindow(false));
        } catch (...) {
            SetOpen(false);
            throw;
        }
        // An editor that was closed in the middle of it says that it did not open; one that does not know better is
        // closed again, unless it is open in another place by now.
        if (opened && FindViewOf(*editor) == nullptr) editor->CloseView();
        if (!opened) SetOpen(false);
        return mIsOpen;
    }

    /// The editor is open in another place, or about to be: what happens here does not concern it any more.
    void LoseEditor() {
        StopTimer();
        SetOpen(false);
        mEditor.reset();
    }

    /// The view that has the editor open, or is opening it; null for none.
    static PluginEmbedView* FindViewOf(const zelaudiofilterhost::AudioFilterEditor& editor) {
        PluginEmbedView* view = FirstOpen();
        while (view != nullptr && view->mEditor.get() != &editor) view = view->mNextOpen;
        return view;
    }

    /// The views with an open editor, each with the next one. A mere pointer: views may go after everything static.
    static PluginEmbedView*& FirstOpen() {
        static PluginEmbedView* first = nullptr;
        return first;
    }

    void SetOpen(bool isOpen) {
        if (isOpen == mIsOpen) return;
        mIsOpen = isOpen;
        PluginEmbedView** link = &FirstOpen();
        while (!isOpen && *link != this) link = &(*link)->mNextOpen;
        if (isOpen) {
            mNextOpen = std::exchange(*link, this);
        } else {
            *link = std::exchange(mNextOpen, nullptr);
        }
    }

    void StartTimer() {
        mTimerID = static_cast<std::int32_t>(zelui::ui::UI_NodeManager::Get(false).GetUniqueTimerID());
        UI_InstallTimer(kIdlePeriod, mTimerID);
        mTimerInstalled = true;
    }

    void StopTimer() {
        if (mTimerID != 0) UI_RemoveTimer(mTimerID, false);
        mTimerID = 0;
        mTimerInstalled = false;
    }

    void PassThemeOn() {
        const zelui::drawbot::SupplierInterface* const supplier = UI_GetDrawSupplier();
        if (!mEditor || supplier == nullptr) return;
        mEditor->SetThemeBrightness(zelui::ui::Theme::Get().GetBrightness(), supplier->WantsHighContrast());
    }

    const FilterPtr mFilter;
    EditorPtr mEditor;  ///< null once another view has it
    std::int32_t mTimerID;
    bool mTimerInstalled;
    bool mIsOpen;                ///< or being opened
    PluginEmbedView* mNextOpen;  ///< of FirstOpen, while it is open
    InstalledFunctions mInstalledFunctions;
};

}  // namespace

}  // namespace zelaudiofilterhostui
