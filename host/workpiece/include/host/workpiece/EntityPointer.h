#pragma once

#include <memory>

/// A non-owning pointer to an entity; null once the entity is destroyed. T must be complete only where a
/// plain pointer is assigned.
template <class T>
class EntityPointer {
public:
    /// A null pointer.
    EntityPointer() = default;
    /// @param of entity to point at, or null.
    EntityPointer(T* of) : entity(of) {
        if (of != nullptr) {
            life = of->GetLife();
        }
    }

    /// The entity, or null where there is none or it was destroyed.
    operator T*() const { return life.expired() ? nullptr : entity; }
    /// As the conversion to T*: check for null first.
    T* operator->() const { return *this; }

private:
    T* entity = nullptr;
    std::weak_ptr<const void> life;
};
