#pragma once

#include <zelcore/RefCountedObject.h>
#include <zelcore/ustring.h>

#include <zelaudiofilterhost/Export.h>

namespace zelaudiofilterhost {

using zelcore::ustring;

/// What a filter says of one of its parameters. Never changes; a filter that renames a parameter hands out a new one.
/// Texts are fit to be shown: one line, well formed, at most PluginComponentInfo::kMaxTextLength code units, and may be
/// empty.
class ZELAUDIOFILTERHOST_API AudioFilterParameterInfo : public zelcore::utility::RefCountedObject {
public:
    /// A parameter of that name; `label` is its unit and may be empty.
    AudioFilterParameterInfo(const ustring& name, const ustring& label);

    /// The parameter's name, for people.
    const ustring& GetName() const { return mName; }
    /// The unit of the value's text ("dB", "Hz"); empty for none.
    const ustring& GetLabel() const { return mLabel; }

protected:
    ~AudioFilterParameterInfo() override;

private:
    ustring mName;
    ustring mLabel;
};

}  // namespace zelaudiofilterhost
