#pragma once

#include <cmath>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <zelaudiofilterhost/AudioFilterEditor.h>
#include <zelui/KeyboardEvent.h>

#include "unit/views/AudioFilterDouble.h"

namespace zeltests {

/// A plug-in's editor that records what is called on it, in order.
class EditorDouble : public zelaudiofilterhost::AudioFilterEditor {
public:
    /// The calls go into `calls`, which outlives the editor.
    explicit EditorDouble(std::vector<std::string>& calls) : mCalls(calls) {}

    zelcore::geom::Rect rect = {0, 0, 300, 200};
    bool usesPlatformView = true;
    bool takesFocus = true;
    bool usesKeys = false;
    bool throwsWhenOpened = false;
    bool opens = true;
    float scaleWhenOpened = 0.0f;
    HWND parent = nullptr;
    float brightness = -1.0f;
    bool highContrast = false;
    std::vector<float> scales = {};  ///< those that it was told, but for the ones that it had already
    bool keepsPixels = false;
    std::function<void()> onRect = {};
    std::function<void()> onOpen = {};
    std::function<void()> onClose = {};

    zelcore::geom::Rect GetViewRect() override {
        mCalls.push_back("rect");
        if (onRect) onRect();
        return rect;
    }
    bool OpenView(HWND window) override {
        mCalls.push_back("open");
        parent = window;
        scaleWhenOpened = GetContentScale();
        if (throwsWhenOpened) throw std::runtime_error("the editor does not open");
        mIsOpen = opens;
        const int opening = ++mOpenings;
        if (onOpen) onOpen();
        return mIsOpen && opening == mOpenings;
    }
    void CloseView() override {
        mCalls.push_back("close");
        mIsOpen = false;
        ++mOpenings;
        if (onClose) onClose();
    }
    bool IsOpen() const { return mIsOpen; }
    void Idle() override { mCalls.push_back("idle"); }
    bool UsesPlatformView() override { return usesPlatformView; }
    void SetThemeBrightness(float themeBrightness, bool wantsHighContrast) override {
        mCalls.push_back("theme");
        brightness = themeBrightness;
        highContrast = wantsHighContrast;
    }
    bool DispatchKeyboardFocus(bool forward) override {
        mCalls.push_back(forward ? "focus forward" : "focus backward");
        return takesFocus;
    }
    bool DispatchCurrentFocus() override {
        mCalls.push_back("current focus");
        return takesFocus;
    }
    using AudioFilterEditor::GetContentScale;
    /// One that draws for the scale: it keeps its pixels and changes its size, and tells that as plug-ins' editors do.
    void SetContentScale(float scale) override {
        const float before = GetContentScale();
        AudioFilterEditor::SetContentScale(scale);
        if (scale == before) return;
        scales.push_back(scale);
        if (!keepsPixels) return;
        rect.width = std::lround(static_cast<float>(rect.width) * before / scale);
        rect.height = std::lround(static_cast<float>(rect.height) * before / scale);
        if (mIsOpen) GetContentSizeChangedSignal()();
    }
    bool DoKey(int osCode, int modifiers, unsigned short character, bool down) override {
        mCalls.push_back((down ? "down " : "up ") + std::to_string(osCode) + " " + std::to_string(modifiers) + " " +
                         std::to_string(character));
        return usesKeys;
    }

protected:
    ~EditorDouble() override { mCalls.push_back("editor gone"); }

private:
    std::vector<std::string>& mCalls;
    bool mIsOpen = false;
    int mOpenings = 0;
};

/// A filter with an editor of its own, or with none.
class FilterWithEditor : public AudioFilterDouble {
public:
    FilterWithEditor() : AudioFilterDouble({{"Gain", "dB", 0.5f}, {"Mix", "%", 0.25f}}) {}

    bool hasEditor = true;
    /// Run in the middle of what is asked, once: plug-ins run the event loop when they are asked for their editors.
    mutable std::function<void()> onHasEditor;
    std::function<void()> onGetEditor;
    boost::intrusive_ptr<EditorDouble> editor;
    zelcore::ustring componentId = zelcore::utility::AsciiToUTF16("TEST-EDITOR");

    zelcore::ustring GetComponentID() const override { return componentId; }
    bool HasEditor() const override {
        RunOnce(onHasEditor);
        return hasEditor;
    }
    boost::intrusive_ptr<zelaudiofilterhost::AudioFilterEditor> GetEditor() override {
        RunOnce(onGetEditor);
        return editor;
    }

private:
    static void RunOnce(std::function<void()>& function) {
        if (const auto once = std::exchange(function, {})) once();
    }
};

}  // namespace zeltests
