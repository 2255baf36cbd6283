#pragma once

#include <zelui/UI_Button.h>

namespace zelui {
namespace controls {

/// A push button with a text.
class ZELUI_API UI_TextButton : public UI_Button {
public:
    UI_TextButton();

    /// How large a button with that text has to be for all of it to be seen, in display units; whole numbers. 0, 0
    /// without a supplier.
    static zelcore::geom::PointF UI_GetRecommendedSize(const drawbot::SupplierInterface* supplier,
                                                       const zelcore::ustring& text, float textSize);

protected:
    ~UI_TextButton() override;
    std::unique_ptr<Peer> UI_MakePeer() override;

private:
    class TextButtonPeer;
};

}  // namespace controls
}  // namespace zelui
