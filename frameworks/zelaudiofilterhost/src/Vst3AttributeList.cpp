#include "Vst3AttributeList.h"

#include <algorithm>
#include <utility>

namespace zelaudiofilterhost {

using Steinberg::int64;
using Steinberg::kInvalidArgument;
using Steinberg::kResultFalse;
using Steinberg::kResultOk;
using Steinberg::tresult;
using Steinberg::uint32;
using Steinberg::Vst::TChar;

tresult Vst3AttributeList::Set(AttrID id, Value value) {
    if (id == nullptr) return kInvalidArgument;
    mValues.insert_or_assign(id, std::move(value));
    return kResultOk;
}

template <typename T>
const T* Vst3AttributeList::Find(AttrID id) const {
    if (id == nullptr) return nullptr;
    const auto found = mValues.find(std::string_view(id));
    return found == mValues.end() ? nullptr : std::get_if<T>(&found->second);
}

tresult PLUGIN_API Vst3AttributeList::setInt(AttrID id, int64 value) { return Set(id, value); }

tresult PLUGIN_API Vst3AttributeList::getInt(AttrID id, int64& value) {
    const int64* const found = Find<int64>(id);
    if (found == nullptr) return kResultFalse;
    value = *found;
    return kResultOk;
}

tresult PLUGIN_API Vst3AttributeList::setFloat(AttrID id, double value) { return Set(id, value); }

tresult PLUGIN_API Vst3AttributeList::getFloat(AttrID id, double& value) {
    const double* const found = Find<double>(id);
    if (found == nullptr) return kResultFalse;
    value = *found;
    return kResultOk;
}

tresult PLUGIN_API Vst3AttributeList::setString(AttrID id, const TChar* text) {
    if (text == nullptr) return kInvalidArgument;
    std::size_t length = 0;
    while (length < kMaxTextLength && text[length] != 0) ++length;
    return Set(id, Text(text, length));
}

tresult PLUGIN_API Vst3AttributeList::getString(AttrID id, TChar* text, uint32 sizeInBytes) {
    const Text* const found = Find<Text>(id);
    const std::size_t room = sizeInBytes / sizeof(TChar);
    if (found == nullptr || text == nullptr || room == 0) return kResultFalse;
    const std::size_t length = std::min(found->size(), room - 1);
    std::copy_n(found->begin(), length, text);
    text[length] = 0;
    return kResultOk;
}

tresult PLUGIN_API Vst3AttributeList::setBinary(AttrID id, const void* data, uint32 sizeInBytes) {
    if ((data == nullptr && sizeInBytes > 0) || sizeInBytes > kMaxBytes) return kInvalidArgument;
    const char* const bytes = static_cast<const char*>(data);
    return Set(id, sizeInBytes == 0 ? std::vector<char>() : std::vector<char>(bytes, bytes + sizeInBytes));
}

tresult PLUGIN_API Vst3AttributeList::getBinary(AttrID id, const void*& data, uint32& sizeInBytes) {
    const std::vector<char>* const found = Find<std::vector<char>>(id);
    if (found == nullptr) {
        data = nullptr;
        sizeInBytes = 0;
        return kResultFalse;
    }
    data = found->data();
    sizeInBytes = static_cast<uint32>(found->size());
    return kResultOk;
}

}  // namespace zelaudiofilterhost
