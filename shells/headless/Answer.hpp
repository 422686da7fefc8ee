#pragma once

#include "shells/common/Json.hpp"
#include "shells/common/Options.hpp"

#include <optional>
#include <string>

namespace headless {

using shell::Json;
using shell::jsonNumber;
using shell::jsonText;
using shell::jsonValue;
using shell::lineFrom;
using shell::Problem;

/// The result line of one command.
class Answer {
 public:
    static Answer done() { return Answer(Json::object({{"ok", true}})); }
    static Answer result(Json value) { return done().with("result", std::move(value)); }
    static Answer failed(const std::string& reason) {
        return Answer(Json::object({{"ok", false}, {"error", reason}}));
    }
    static Answer from(const Problem& problem) { return problem ? failed(*problem) : done(); }

    Answer with(const char* key, Json value) && {
        fields_[key] = std::move(value);
        return std::move(*this);
    }
    bool isOk() const { return fields_["ok"].get<bool>(); }
    const Json& fields() const { return fields_; }

 private:
    explicit Answer(Json fields) : fields_(std::move(fields)) {}
    Json fields_;
};

}  // namespace headless
