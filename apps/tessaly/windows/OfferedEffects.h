#pragma once

#include <QString>
#include <vector>

#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/AudioFilterDescriptor.h>

namespace tessaly {

/// One effect that can be added to a chain.
struct OfferedEffect {
    boost::intrusive_ptr<zelaudiofilterhost::AudioFilterDescriptor> descriptor;
    QString format;  ///< "VST", "VST3"
    QString vendor;  ///< never empty: a localised text where the plug-in names none
    QString name;
};

/// The enabled effects of the catalogue, instruments left out, sorted by format (the newer first), vendor and name as
/// people of the user's language do. Main thread.
std::vector<OfferedEffect> CollectOfferedEffects();

}  // namespace tessaly
