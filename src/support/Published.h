#pragma once

#include "support/ObservableObject.h"

#include <utility>

/// One published value of an `ObservableObject`: reads like a `T`, and an assignment announces the change on its owner
/// before it stores. Declare it as `Published<bool> online{*this, false};`.
template <typename T>
class Published final {
public:
    Published(ObservableObject& owner, T initial)
        : m_owner{owner}
        , m_value{std::move(initial)} {}
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    Published& operator=(T value) {
        m_owner.announceChange();
        m_value = std::move(value);
        return *this;
    }

    [[nodiscard]] const T& value() const { return m_value; }
    operator const T&() const { return m_value; }
    const T* operator->() const { return &m_value; }

private:
    ObservableObject& m_owner;
    T m_value;
};
