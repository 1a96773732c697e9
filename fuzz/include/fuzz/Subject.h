#pragma once

#include <fuzz/Documents.h>
#include <iostream>
#include <memory>
#include <support/SampleMechanisms.h>

/// An entity that inputs are tried on. It is costly to build, so one that refused an input, and is as it was,
/// serves for the next.
template <class Entity>
class Subject {
public:
    explicit Subject(sample::Mechanism (*make_)()) : make(make_) { Renew(); }

    void Renew() {
        entity = std::make_unique<Entity>(sample::Build(make(), 5).get());
        good = entity->ToJson("");
        whole = Everything();
    }
    /// The document of the entity as it is.
    const Json::Value& Good() const { return good; }
    void RequireUnchanged() const {
        const std::string now = Everything();
        if (now != whole) {
            std::cerr << "before:\n" << whole << "\nafter:\n" << now << '\n';
        }
        fuzz::Require(now == whole);
    }

    Entity* operator->() { return entity.get(); }
    Entity& operator*() { return *entity; }

private:
    std::string Everything() const {
        return fuzz::ToText(entity->ToJson("")) + fuzz::ToText(entity->GenericEntityConfig::DataToJson(""));
    }

    sample::Mechanism (*make)();
    std::unique_ptr<Entity> entity;
    Json::Value good;
    std::string whole;
};
