#pragma once

#include <QByteArray>

namespace zeltests {

/// An environment variable as it was, when the object goes.
class KeptVariable {
public:
    explicit KeptVariable(const char* name)
        : mName(name), mWasSet(qEnvironmentVariableIsSet(name)), mValue(qgetenv(name)) {}
    ~KeptVariable() { mWasSet ? qputenv(mName, mValue) : qunsetenv(mName); }
    KeptVariable(const KeptVariable&) = delete;
    KeptVariable& operator=(const KeptVariable&) = delete;

    void Set(const QByteArray& value) { qputenv(mName, value); }
    void Unset() { qunsetenv(mName); }

private:
    const char* mName;
    bool mWasSet;
    QByteArray mValue;
};

}  // namespace zeltests
