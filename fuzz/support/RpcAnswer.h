#pragma once

#include <string>

#include <boost/make_shared.hpp>

#include <zelcore/Serialization.h>

#include "support/Expect.h"

namespace zelfuzz {

/// An answer of an RPC server, which holds to the protocol.
struct RpcAnswer {
    /// Reads it by itself. What is none is a finding.
    explicit RpcAnswer(const std::string& text) {
        using namespace zelcore::serialization;
        const Variant answer = boost::make_shared<boost::any>(FromJson(text));
        const Variant result = GetVariantInObject(answer, "result");
        const Variant error = GetVariantInObject(answer, "error");
        zelcore::utf8string version, message;
        Expect(GetInObject(answer, "jsonrpc", version) && version == "2.0", "an answer is of the protocol");
        Expect(!result != !error, "an answer is a result or an error");
        value = GetVariantInObject(result, "value");
        Expect(!result || value, "a result has a value");
        Expect(!error || (GetInObject(error, "code", code) && GetInObject(error, "message", message)),
               "an error says what is wrong");
        id = GetVariantInObject(answer, "id");
        Expect(id != nullptr, "an answer says to what");
    }

    bool IsError() const { return !value; }

    zelcore::serialization::Variant id;
    zelcore::serialization::Variant value;  ///< null for an error
    int code = 0;                           ///< of an error
};

}  // namespace zelfuzz
