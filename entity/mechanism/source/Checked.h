#pragma once

#include <concepts>
#include <map>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

/// Element access with the same error texts on every platform: the texts of vector::at and map::at differ
/// between standard libraries, and callers show them.
namespace mechanism_detail {

/// @throws std::out_of_range "invalid vector subscript".
[[noreturn]] inline void RefuseSubscript() { throw std::out_of_range("invalid vector subscript"); }

/// @throws std::out_of_range "invalid map<K, T> key".
[[noreturn]] inline void RefuseKey() { throw std::out_of_range("invalid map<K, T> key"); }

/// @throws std::out_of_range "invalid vector subscript" for an index (a negative one included) past the end.
template <class T, std::integral Index>
const T& At(const std::vector<T>& elements, Index index) {
    if (std::cmp_less(index, 0) || std::cmp_greater_equal(index, elements.size())) {
        RefuseSubscript();
    }
    return elements[static_cast<std::size_t>(index)];
}

template <class T, std::integral Index>
T& At(std::vector<T>& elements, Index index) {
    return const_cast<T&>(At(std::as_const(elements), index));
}

/// @throws std::out_of_range "invalid map<K, T> key" for a key not in the map.
template <class K, class T, class C, class A>
const T& At(const std::map<K, T, C, A>& entries, const std::type_identity_t<K>& key) {
    const auto found = entries.find(key);
    if (found == entries.end()) {
        RefuseKey();
    }
    return found->second;
}

template <class K, class T, class C, class A>
T& At(std::map<K, T, C, A>& entries, const std::type_identity_t<K>& key) {
    return const_cast<T&>(At(std::as_const(entries), key));
}

} // namespace mechanism_detail
