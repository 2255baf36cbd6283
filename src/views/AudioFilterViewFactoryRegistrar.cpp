#include <zelaudiofilterhostui/AudioFilterViewFactoryRegistrar.h>

namespace zelaudiofilterhostui {

AudioFilterViewFactoryRegistrar::AudioFilterViewFactoryRegistrar(const zelcore::ustring& componentId,
                                                                 AudioFilterViewFactory::FactoryFunction function) {
    AudioFilterViewFactory::GetInstance().RegisterFactoryFunction(componentId, function);
}

AudioFilterViewFactoryRegistrar::~AudioFilterViewFactoryRegistrar() = default;

}  // namespace zelaudiofilterhostui
