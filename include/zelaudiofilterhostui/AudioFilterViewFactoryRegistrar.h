#pragma once

#include <zelaudiofilterhostui/AudioFilterViewFactory.h>

namespace zelaudiofilterhostui {

/// Registers a function with the factory when it is made, for static objects of a host: one for each kind of view. The
/// registration stays when the registrar goes.
class ZELAUDIOFILTERHOSTUI_API AudioFilterViewFactoryRegistrar {
public:
    /// Registers `function` for that component; see AudioFilterViewFactory::RegisterFactoryFunction.
    AudioFilterViewFactoryRegistrar(const zelcore::ustring& componentId,
                                    AudioFilterViewFactory::FactoryFunction function);
    ~AudioFilterViewFactoryRegistrar();  // NOLINT(performance-trivially-destructible): exported, as hosts expect it
};

}  // namespace zelaudiofilterhostui
