// A value or the error that prevented it: how every fallible operation in the installer reports.
//
// `Expected<T, E>` holds exactly one of a `T` and an `E`; `Expected<void, E>` holds an `E` or
// nothing. A success converts implicitly from the value; a failure is made with `failure(e)` so that
// the two are never confused, even when `T` and `E` could convert into each other.
#pragma once

#include <cassert>
#include <optional>
#include <utility>
#include <variant>

namespace platform {

template <class T, class E>
class [[nodiscard]] Expected {
public:
    Expected(T value) : state_(std::in_place_index<0>, std::move(value)) {}
    static Expected failure(E error) { return Expected(std::in_place_index<1>, std::move(error)); }

    bool hasValue() const { return state_.index() == 0; }
    explicit operator bool() const { return hasValue(); }

    const T& value() const& { assert(hasValue()); return std::get<0>(state_); }
    T&& value() && { assert(hasValue()); return std::get<0>(std::move(state_)); }
    const E& error() const& { assert(!hasValue()); return std::get<1>(state_); }
    E&& error() && { assert(!hasValue()); return std::get<1>(std::move(state_)); }

private:
    template <std::size_t I, class A>
    Expected(std::in_place_index_t<I> tag, A&& a) : state_(tag, std::forward<A>(a)) {}

    std::variant<T, E> state_;
};

template <class E>
class [[nodiscard]] Expected<void, E> {
public:
    Expected() = default;
    static Expected failure(E error) { Expected result; result.error_.emplace(std::move(error)); return result; }

    bool hasValue() const { return !error_.has_value(); }
    explicit operator bool() const { return hasValue(); }

    const E& error() const& { assert(!hasValue()); return *error_; }
    E&& error() && { assert(!hasValue()); return std::move(*error_); }

private:
    std::optional<E> error_;
};

}  // namespace platform
