#include <zelui/SupplierInterface.h>

namespace zelui {
namespace drawbot {

namespace {

class ScreenSupplier final : public SupplierInterface {};

}  // namespace

SupplierInterface::SupplierInterface() = default;

SupplierInterface::~SupplierInterface() = default;

const SupplierInterface* SupplierInterface::GetDefault() {
    static const ScreenSupplier supplier;
    return &supplier;
}

}  // namespace drawbot
}  // namespace zelui
