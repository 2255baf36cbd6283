#pragma once

#include <zelui/Export.h>

namespace zelui {
namespace drawbot {

/// Where drawing comes from: fonts, text measuring, paths and surfaces for one kind of output. Whoever draws is given
/// one; it is owned by the toolkit and lives as long as the application object. Main thread.
class ZELUI_API SupplierInterface {
public:
    /// The supplier of the screen.
    static const SupplierInterface* GetDefault();

protected:
    SupplierInterface();
    virtual ~SupplierInterface();
    SupplierInterface(const SupplierInterface&) = delete;
    SupplierInterface& operator=(const SupplierInterface&) = delete;
};

}  // namespace drawbot
}  // namespace zelui
