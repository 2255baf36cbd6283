// Boost.JSON without its library: its source is compiled here and nowhere else.
#include <boost/json/src.hpp>
