# Headers that nearly every source of a kind includes, compiled once for all of them. Most of the time of a build from
# nothing goes into these. Off in daily work, where each source has to name what it uses.
option(ZEL_PCH "Precompile the headers that are used most" OFF)

set(ZEL_PCH_STANDARD <algorithm> <array> <atomic> <cmath> <cstddef> <cstdint> <filesystem> <functional> <map> <memory>
    <optional> <set> <stdexcept> <string> <utility> <vector>)
set(ZEL_PCH_BOOST <boost/bind/bind.hpp> <boost/function.hpp> <boost/intrusive_ptr.hpp> <boost/make_shared.hpp>
    <boost/signals2/connection.hpp> <boost/signals2/dummy_mutex.hpp> <boost/signals2/signal.hpp>
    <boost/signals2/signal_type.hpp> <boost/signals2/trackable.hpp>)
set(ZEL_PCH_QT <QApplication> <QEvent> <QObject> <QPainter> <QPointer> <QStyle> <QWidget>)

function(zel_precompile target)
  if(ZEL_PCH)
    target_precompile_headers(${target} PRIVATE ${ARGN})
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
  endif()
endfunction()

# zel_precompile_qt_library(<target>): a library whose sources are full of widgets.
function(zel_precompile_qt_library target)
  zel_precompile(${target} ${ZEL_PCH_STANDARD} ${ZEL_PCH_BOOST} ${ZEL_PCH_QT})
endfunction()

# zel_precompile_test(<target> <libs…>): one for all tests without Qt, one for those with it, which are compiled otherwise.
function(zel_precompile_test target)
  if(NOT ZEL_PCH)
    return()
  endif()
  if("${ARGN}" MATCHES "Qt6::|tessaly_objects")
    target_precompile_headers(${target} REUSE_FROM zel_test_pch_qt)
  else()
    target_precompile_headers(${target} REUSE_FROM zel_test_pch)
  endif()
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
endfunction()
