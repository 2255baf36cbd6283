#pragma once

#include <zeltransport/Export.h>

namespace zeltransport {

/// Whose the other end of a loopback connection is, as far as the system's connection table tells.
enum class PeerOwner {
    kExpected,  ///< the expected process, and the user of this process
    kForeign,   ///< another process or another user
    kNotYet     ///< the connection is not accepted yet, or not in the table (any more): ask again
};

/// Looks up who holds the far end of the loopback TCP connection whose far end has port `peerPort` and whose near end
/// has port `ownPort`. `expectedProcess` 0 means any process of this user. Any thread; reads the system's tables anew
/// at each call.
ZELTRANSPORT_API PeerOwner LookUpPeer(unsigned short peerPort, unsigned short ownPort, unsigned long expectedProcess);

}  // namespace zeltransport
