#pragma once

#include <cstdint>
#include <memory>

/// The part of a plug-in's editor that is on the screen: a native window with two colours.
namespace zeltestplugins {

class EditorWindow {
public:
    static constexpr std::uint32_t kUpperColour = 0xE08020;
    static constexpr std::uint32_t kLowerColour = 0x2060C0;

    EditorWindow();
    ~EditorWindow();
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;

    /// False when there is no display.
    bool Open(void* parent, int width, int height);
    /// Waits until the window is gone: the parent's goes next.
    void Close();
    void Resize(int width, int height);

    /// Draws what has to be drawn, where that does not happen by itself. True when the window was clicked since the
    /// last time.
    bool HandleEvents();
    /// Becomes readable when there are events; -1 while closed, and where they come by themselves.
    int GetDescriptor() const;

private:
    class Platform;

    std::unique_ptr<Platform> mPlatform;  ///< while open
};

}  // namespace zeltestplugins
