#pragma once

#include <string>
#include <utility>
#include <variant>

/// Why there is no value.
template <class Error = std::string>
struct Failure {
    Error error;
};
template <class Error>
Failure(Error) -> Failure<Error>;
Failure(const char*)->Failure<std::string>;

/// A value, or the reason why there is none.
///
///     Result<CategoryRecord> found = categoryCalled(name, categories);
///     if (!found) return complain(program, found.error());
///     show(found->categoryName());
///
/// A function of this type returns a value as it is and a reason as `Failure{"there is no such
/// category"}`. A reason that is passed on is wrapped anew: `return Failure{found.error()};`.
template <class Value, class Error = std::string>
class [[nodiscard]] Result {
 public:
    Result(Value value) : storage_(std::in_place_index<0>, std::move(value)) {}
    template <class Reason>
    Result(Failure<Reason> failure) : storage_(std::in_place_index<1>, std::move(failure.error)) {}

    explicit operator bool() const { return storage_.index() == 0; }

    // Only with a value.
    Value& operator*() & { return std::get<0>(storage_); }
    const Value& operator*() const& { return std::get<0>(storage_); }
    Value&& operator*() && { return std::get<0>(std::move(storage_)); }
    Value* operator->() { return &**this; }
    const Value* operator->() const { return &**this; }

    /// Only without a value. Ends with no full stop where it is a text.
    const Error& error() const { return std::get<1>(storage_); }

 private:
    std::variant<Value, Error> storage_;
};
