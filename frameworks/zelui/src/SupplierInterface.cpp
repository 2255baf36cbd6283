#include <zelui/SupplierInterface.h>

#include "QtSupplier.h"

namespace zelui {
namespace drawbot {

SupplierInterface::SupplierInterface() = default;

SupplierInterface::~SupplierInterface() = default;

const SupplierInterface* SupplierInterface::GetDefault() {
    static const QtSupplier supplier;
    return &supplier;
}

}  // namespace drawbot
}  // namespace zelui
