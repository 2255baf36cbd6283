#pragma once

#include <functional>
#include <string>
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
    std::function<void()> onRect = {};

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
        return opens;
    }
    void CloseView() override { mCalls.push_back("close"); }
    void Idle() override { mCalls.push_back("idle"); }
    bool UsesPlatformView() override { return usesPlatformView; }
    void SetThemeBrightness(float themeBrightness, bool) override {
        mCalls.push_back("theme");
        brightness = themeBrightness;
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
    bool DoKey(int osCode, int modifiers, unsigned short character, bool down) override {
        mCalls.push_back((down ? "down " : "up ") + std::to_string(osCode) + " " + std::to_string(modifiers) + " " +
                         std::to_string(character));
        return usesKeys;
    }

protected:
    ~EditorDouble() override { mCalls.push_back("editor gone"); }

private:
    std::vector<std::string>& mCalls;
};

/// A filter with an editor of its own, or with none.
class FilterWithEditor : public AudioFilterDouble {
public:
    FilterWithEditor() : AudioFilterDouble({{"Gain", "dB", 0.5f}, {"Mix", "%", 0.25f}}) {}

    bool hasEditor = true;
    boost::intrusive_ptr<EditorDouble> editor;
    zelcore::ustring componentId = zelcore::utility::AsciiToUTF16("TEST-EDITOR");

    zelcore::ustring GetComponentID() const override { return componentId; }
    bool HasEditor() const override { return hasEditor; }
    boost::intrusive_ptr<zelaudiofilterhost::AudioFilterEditor> GetEditor() override { return editor; }
};

}  // namespace zeltests
