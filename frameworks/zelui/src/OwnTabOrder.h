#pragma once

namespace zelui {

/// A node whose parent takes the Tab key through what is in it: to others it is the parent alone that the key stops at.
/// What in it loses the focus leaves it to the parent.
class OwnTabOrder {
protected:
    OwnTabOrder() = default;
    virtual ~OwnTabOrder() = default;
};

}  // namespace zelui
