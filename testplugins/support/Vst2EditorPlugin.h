#pragma once

#include <cstdio>
#include <string>

#include "support/Vst2Plugin.h"

/// The common part of the VST2 test plug-ins with an editor: it has a rectangle, opens, and keeps a list of the calls.
namespace zeltestplugins {

class Vst2EditorPlugin : public Vst2Plugin {
public:
    Vst2EditorPlugin(vst2::HostCallback host, const Vst2Facts& facts, int width, int height) : Vst2Plugin(host, facts) {
        mEffect.flags |= vst2::kHasEditor;
        SetRect(width, height);
        std::fill(mValues.begin(), mValues.end(), 0.0f);
    }

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        switch (operation) {
            case vst2::kEditorGetRect:
                *static_cast<vst2::EditorRect**>(pointer) = GetRect();
                return 1;
            case vst2::kEditorOpen:
                Note("open");
                return OpenEditor(pointer) ? 1 : 0;
            case vst2::kEditorClose:
                Note("close");
                CloseEditor();
                return 1;
            case vst2::kEditorIdle:
                IdleEditor();
                return 0;
            case vst2::kEditorKeyDown:
            case vst2::kEditorKeyUp:
                return PressKey(operation == vst2::kEditorKeyDown, index, value, static_cast<int>(number)) ? 1 : 0;
            case vst2::kGetParameterDisplay:
                return HasParameter(index) ? Answer(pointer, 256, TellParameter(index).c_str()) : 0;
            default:
                return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
        }
    }

    virtual vst2::EditorRect* GetRect() { return &mRect; }
    virtual bool OpenEditor(void* parent) = 0;
    virtual void CloseEditor() {}
    virtual void IdleEditor() {}
    /// Whether it is used.
    virtual bool PressKey(bool isDown, std::int32_t character, std::intptr_t virtualKey, int modifiers) {
        std::string text(isDown ? "down" : "up");
        for (const std::intptr_t number : {std::intptr_t(character), virtualKey, std::intptr_t(modifiers)}) {
            text += '.' + std::to_string(number);
        }
        Note(text);
        return character == 'a' || virtualKey == vst2::kKeyEscape;
    }
    /// The text of a parameter's value.
    virtual std::string TellParameter(std::int32_t index) = 0;

    void SetRect(int width, int height) {
        mRect.right = static_cast<std::int16_t>(width);
        mRect.bottom = static_cast<std::int16_t>(height);
    }
    /// What the host answers.
    std::intptr_t AskSize(std::int32_t width, std::intptr_t height) {
        return mHost(&mEffect, vst2::kHostSizeWindow, width, height, nullptr, 0.0f);
    }

    void Note(const std::string& call) { mCalls += (mCalls.empty() ? "" : " ") + call; }
    /// The calls since this was asked last.
    std::string TakeCalls() {
        std::string calls;
        calls.swap(mCalls);
        return calls;
    }

    vst2::EditorRect mRect = {};

private:
    std::string mCalls;
};

}  // namespace zeltestplugins
