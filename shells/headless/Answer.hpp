#pragma once

#include "shells/headless/Json.hpp"

#include <optional>
#include <string>

namespace headless {

/// Why something could not be done; nullopt when it was.
using Failure = std::optional<std::string>;

/// The result line of one command.
class Answer {
 public:
    static Answer done() { return Answer(Json::object({{"ok", true}})); }
    static Answer result(Json value) { return done().with("result", std::move(value)); }
    static Answer failed(const std::string& reason) {
        return Answer(Json::object({{"ok", false}, {"error", reason}}));
    }
    static Answer from(const Failure& failure) { return failure ? failed(*failure) : done(); }

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
