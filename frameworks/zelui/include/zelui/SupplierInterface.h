#pragma once

#include <boost/intrusive_ptr.hpp>
#include <zelcore/ustring.h>

#include <zelui/Drawbot.h>
#include <zelui/Export.h>

namespace zelui {
namespace drawbot {

/// Where drawing comes from: fonts, text measuring, paths and surfaces for one kind of output. Whoever draws is given
/// one; it is owned by the toolkit and lives as long as the application object. Main thread.
class ZELUI_API SupplierInterface {
public:
    /// How letters look; can be combined by "or".
    enum FontStyle { kFontPlain = 0, kFontBold = 1, kFontItalic = 2 };

    /// The supplier of the screen.
    static const SupplierInterface* GetDefault();

    /// A font by its family name, a combination of FontStyle and a size in display units; null for a size that is not
    /// above 0 and at most 1000, and without an application object. Sizes are rounded to whole units, at least 1. A
    /// name that the system does not have gives the font that the system takes instead.
    virtual boost::intrusive_ptr<Font> NewFont(const zelcore::ustring& name, int style, float size) const = 0;
    /// A path with nothing in it yet.
    virtual boost::intrusive_ptr<Path> NewPath() const = 0;
    /// A surface of its own, `width` by `height` display units at `scale` pixels per unit, to measure or draw on
    /// without a window; null for a size that is not above 0 or has more than 64 million pixels.
    virtual boost::intrusive_ptr<Drawbot> NewDrawbot(int width, int height, int scale) const = 0;

    /// Whether the user asked the system for colours of high contrast. Plug-in editors that know themes are told.
    virtual bool WantsHighContrast() const = 0;

protected:
    SupplierInterface();
    virtual ~SupplierInterface();
    SupplierInterface(const SupplierInterface&) = delete;
    SupplierInterface& operator=(const SupplierInterface&) = delete;
};

}  // namespace drawbot
}  // namespace zelui
