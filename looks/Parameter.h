#pragma once

#include <cstddef>

namespace tidalume {

/// Elements that lie one after another in memory that somebody else owns.
template <typename Element>
struct Span {
    const Element* data = nullptr; ///< the first element
    std::size_t size = 0;          ///< number of elements

    /// No elements.
    constexpr Span() = default;
    /// So many elements.
    constexpr Span(const Element* data, std::size_t size) : data(data), size(size) {}
    /// All elements of an array.
    template <std::size_t length>
    constexpr Span(const Element (&elements)[length]) : data(elements), size(length) {}

    /// For loops over all elements.
    /// @{
    constexpr const Element* begin() const { return data; }
    constexpr const Element* end() const { return data + size; }
    /// @}
    /// An element, by its index below `size`.
    constexpr const Element& operator[](std::size_t index) const { return data[index]; }
};

/// What may be set about a look: a row of the look's table, for typed setters, command lines, pages and layouts alike.
struct Parameter {
    const char* name = "";     ///< in camel case, as in the setter: "touchRadius" for `setTouchRadius`
    const char* label = "";    ///< for people: "Width of a finger"
    const char* unit = "";     ///< for people; empty for a share from nothing to all, and for a choice
    float minimum = 0;         ///< smallest value
    float maximum = 0;         ///< largest value
    float initial = 0;         ///< the value before anything is set
    const char* sentence = ""; ///< what a larger value does
    Span<const char*> choices; ///< of a choice: the names of the values 0, 1, 2, ...; empty for a number
};

/// A parameter and the value that a preset gives it.
struct Setting {
    const char* parameter = ""; ///< its name
    float value = 0;            ///< in its unit
};

/// Settings that go together. What a preset does not name has its initial value.
struct Preset {
    const char* name = "";  ///< in camel case, for command lines and layouts: "calmLake"
    const char* title = ""; ///< for people
    Span<Setting> settings; ///< what differs from the initial values
};

} // namespace tidalume
