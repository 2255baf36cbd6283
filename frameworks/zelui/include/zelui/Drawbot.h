#pragma once

#include <boost/intrusive_ptr.hpp>
#include <zelcore/Geometry.h>
#include <zelcore/RefCountedObject.h>
#include <zelcore/ustring.h>

#include <zelui/Export.h>

namespace zelui {
namespace drawbot {

/// A colour; every part from 0 to 1, what is outside counts as the nearer end.
struct ColorRGBA {
    /// From 0 to 1, like the others.
    float red = 0.0f;
    /// From 0 to 1.
    float green = 0.0f;
    /// From 0 to 1.
    float blue = 0.0f;
    /// 0 lets everything through, 1 nothing.
    float alpha = 1.0f;

    /// Equal when all members are.
    bool operator==(const ColorRGBA&) const = default;
};

/// A font at one size. Made by SupplierInterface::NewFont; never changes. Main thread.
class ZELUI_API Font : public zelcore::utility::RefCountedObject {
public:
    /// How far the text advances, in display units: the full width of the whole text, trailing blanks included. Line
    /// ends and other control characters count as blanks.
    virtual float GetStringWidth(const zelcore::ustring& text) const = 0;
    /// Height of the letters above the baseline, and of what hangs below it; display units.
    virtual float GetAscent() const = 0;
    /// How far letters reach below the base line.
    virtual float GetDescent() const = 0;

protected:
    Font();
    ~Font() override;
};

/// An outline to stroke or fill. Made by SupplierInterface::NewPath; belongs to one supplier. Main thread.
class ZELUI_API Path : public zelcore::utility::RefCountedObject {
public:
    /// Begins a new line there.
    virtual void MoveTo(const zelcore::geom::PointF& point) = 0;
    /// Goes on in a straight line to there.
    virtual void LineTo(const zelcore::geom::PointF& point) = 0;
    /// Goes back to where the line began.
    virtual void Close() = 0;
    /// Adds a closed line round a rectangle.
    virtual void AddRect(const zelcore::geom::RectF& rect) = 0;

protected:
    Path();
    ~Path() override;
};

/// A surface to draw on: the screen's, handed to UI_Node::UI_Draw for the time of that call, or one of its own that a
/// supplier made. Coordinates are display units; a node draws in the space of its own frame, so that filling its local
/// rectangle fills exactly the node. Fonts and paths must come from the same supplier; others are not drawn. Main
/// thread.
class ZELUI_API Drawbot : public zelcore::utility::RefCountedObject {
public:
    /// Edges fall on the nearest pixels, whatever the scale.
    virtual void FillRect(const zelcore::geom::RectF& rect, const ColorRGBA& color) = 0;
    /// Fills what the outline goes round an odd number of times: a rectangle inside another is a hole.
    virtual void FillPath(const Path& path, const ColorRGBA& color) = 0;
    /// Draws a line `width` units wide along the middle of the outline; 0 or less draws nothing. A line of 1 unit falls
    /// on whole pixels when its coordinates end in .5.
    virtual void StrokePath(const Path& path, const ColorRGBA& color, float width) = 0;
    /// Draws one line of text whose baseline starts at `origin`. Line ends and control characters are drawn as blanks;
    /// nothing in the text is markup.
    virtual void DrawString(const zelcore::ustring& text, const Font& font, const zelcore::geom::PointF& origin,
                            const ColorRGBA& color) = 0;
    /// Nothing is drawn outside `rect`, nor outside those pushed before, until PopClip. A PopClip too many is ignored.
    virtual void PushClip(const zelcore::geom::RectF& rect) = 0;
    /// Takes the innermost clip away.
    virtual void PopClip() = 0;

protected:
    Drawbot();
    ~Drawbot() override;
};

/// Which part of a text gives way to "…" when it is too wide.
enum TruncateMode { kTruncateNone = 0, kTruncateStart = 1, kTruncateEnd = 2, kTruncateMiddle = 3 };

/// `text` if it is at most `width` wide, otherwise as much of it as fits with "…" in the place of the rest; empty when
/// not even that fits. kTruncateNone returns the text. Never cuts a character in two.
ZELUI_API zelcore::ustring TruncateString(const zelcore::ustring& text, const Font& font, float width,
                                          TruncateMode mode);

}  // namespace drawbot
}  // namespace zelui
