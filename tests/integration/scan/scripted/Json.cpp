// Compiled once, apart from the rest.
#include <boost/json/src.hpp>
