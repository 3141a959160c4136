#pragma once

#include "core/run_time_error.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace quorvane {

// An array indexed from 1. An index outside throws SubscriptOutOfRange.
template<typename T>
class OneBased {
  public:
    std::int32_t Count() const { return static_cast<std::int32_t>(items_.size()); }

    T& operator[](std::int32_t index) { return items_[Position(index)]; }
    const T& operator[](std::int32_t index) const { return items_[Position(index)]; }

    // The new last item.
    T& Add(T item = {}) { return items_.emplace_back(std::move(item)); }
    // Those behind it move down by one.
    void Remove(std::int32_t index) {
        items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(Position(index)));
    }
    // The content is kept as far as it fits.
    void Resize(std::int32_t count) { items_.resize(count > 0 ? static_cast<std::size_t>(count) : 0); }
    void Clear() { items_.clear(); }

    auto begin() { return items_.begin(); }
    auto end() { return items_.end(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

    bool operator==(const OneBased&) const = default;

  private:
    std::size_t Position(std::int32_t index) const {
        if (index < 1 || index > Count()) throw RunTimeError::SubscriptOutOfRange();
        return static_cast<std::size_t>(index - 1);
    }

    std::vector<T> items_;
};

} // namespace quorvane
