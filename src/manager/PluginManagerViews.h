#pragma once

#include <zelui/FormRect.h>
#include <zelui/SupplierInterface.h>
#include <zelui/Theme.h>
#include <zelui/UI_MultiColumnTree.h>
#include <zelui/UI_SubView.h>

namespace zelaudiofilterhostui {

// The dialog's own, and nobody else's: whoever includes this gets classes that no other file can name.
namespace {

/// A group of controls with a frame round it.
class BoxView : public zelui::ui::UI_SubView {
public:
    void UI_Draw(zelui::drawbot::Drawbot& drawbot) override {
        zelui::ui::UI_SubView::UI_Draw(drawbot);
        const zelui::drawbot::SupplierInterface* const supplier = UI_GetDrawSupplier();
        if (supplier == nullptr) return;
        // The middle of a line one unit wide, so that it falls on whole pixels.
        zelcore::geom::RectF frame = UI_GetLocalRectF();
        frame.left += 0.5f;
        frame.top += 0.5f;
        frame.width -= 1.0f;
        frame.height -= 1.0f;
        const boost::intrusive_ptr<zelui::drawbot::Path> path = supplier->NewPath();
        zelui::utils::FormRect(*path, frame);
        drawbot.StrokePath(*path, zelui::ui::GetColor(zelui::ui::kColorFrame), 1.0f);
    }
};

/// The list of plug-ins. All that it does is set by the dialog.
class PluginMultiColumnTree : public zelui::controls::UI_MultiColumnTree {};

}  // namespace

}  // namespace zelaudiofilterhostui
