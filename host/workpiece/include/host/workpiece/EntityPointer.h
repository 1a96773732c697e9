#pragma once

#include <memory>

/// A pointer to an entity that somebody else owns; null once the entity has ended. T may be incomplete except
/// where a pointer is taken in.
template <class T>
class EntityPointer {
public:
    EntityPointer() = default;
    EntityPointer(T* of) : entity(of) {
        if (of != nullptr) {
            life = of->GetLife();
        }
    }

    operator T*() const { return life.expired() ? nullptr : entity; }
    T* operator->() const { return *this; }

private:
    T* entity = nullptr;
    std::weak_ptr<const void> life;
};
