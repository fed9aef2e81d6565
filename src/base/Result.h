#pragma once

#include <QtGlobal>

#include <utility>
#include <variant>

namespace Orbita {

/// The failure side of a Result: `return Failure(GrabError::TakenByOther);`.
template <typename E>
struct Failure {
    explicit Failure(E e) : error(std::move(e)) {}
    E error;
};

/// Either a value or the reason why there is none.
///
/// Reading the value of a failure, or the error of a success, is a programming error.
template <typename T, typename E>
class [[nodiscard]] Result {
public:
    Result(T value) : m_state(std::in_place_index<0>, std::move(value)) {}
    Result(Failure<E> failure) : m_state(std::in_place_index<1>, std::move(failure.error)) {}

    [[nodiscard]] bool hasValue() const { return m_state.index() == 0; }
    explicit operator bool() const { return hasValue(); }

    [[nodiscard]] const T &value() const &
    {
        Q_ASSERT(hasValue());
        return *std::get_if<0>(&m_state);
    }
    [[nodiscard]] T &&value() &&
    {
        Q_ASSERT(hasValue());
        return std::move(*std::get_if<0>(&m_state));
    }
    [[nodiscard]] const E &error() const
    {
        Q_ASSERT(!hasValue());
        return *std::get_if<1>(&m_state);
    }
    const T &operator*() const & { return value(); }
    const T *operator->() const { return &value(); }

private:
    std::variant<T, E> m_state;
};

/// Success without a value, or the reason of the failure.
template <typename E>
class [[nodiscard]] Result<void, E> {
public:
    Result() = default;
    Result(Failure<E> failure) : m_state(std::in_place_index<1>, std::move(failure.error)) {}

    [[nodiscard]] bool hasValue() const { return m_state.index() == 0; }
    explicit operator bool() const { return hasValue(); }
    [[nodiscard]] const E &error() const
    {
        Q_ASSERT(!hasValue());
        return *std::get_if<1>(&m_state);
    }

private:
    std::variant<std::monostate, E> m_state;
};

} // namespace Orbita
