#pragma once

#include <zelui/SupplierInterface.h>

namespace zelui {
namespace drawbot {

/// The supplier of the screen.
class QtSupplier final : public SupplierInterface {
public:
    boost::intrusive_ptr<Font> NewFont(const zelcore::ustring& name, int style, float size) const override;
    boost::intrusive_ptr<Path> NewPath() const override;
    boost::intrusive_ptr<Drawbot> NewDrawbot(int width, int height, int scale) const override;
    bool WantsHighContrast() const override;
};

}  // namespace drawbot
}  // namespace zelui
