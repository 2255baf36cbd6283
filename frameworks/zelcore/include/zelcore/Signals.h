#pragma once

#include <boost/signals2/connection.hpp>
#include <boost/signals2/dummy_mutex.hpp>
#include <boost/signals2/signal.hpp>
#include <boost/signals2/signal_type.hpp>
#include <boost/signals2/trackable.hpp>

/// The names of Boost.Signals version 1 over its successor. Boost has not shipped them since 1.69, so these add nothing
/// twice. Signals of views and catalogues live on one thread, hence no lock.
namespace boost {

/// The signal of version 1: for one thread, without locks.
template <typename Signature>
using signal = typename signals2::signal_type<Signature, signals2::keywords::mutex_type<signals2::dummy_mutex>>::type;

namespace signals {

using connection = signals2::connection;
using scoped_connection = signals2::scoped_connection;
using trackable = signals2::trackable;

}  // namespace signals
}  // namespace boost
