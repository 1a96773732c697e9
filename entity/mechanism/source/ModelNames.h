#pragma once

class GenericEntity;

namespace mechanism_detail {

/// Names every model after the entity, where it has one: "KIND:NAME - 基座" for the fixed base, "KIND:NAME -
/// 轴N" for the models of link N, counted from 1.
void NameModels(const GenericEntity& entity, const char* kind);

} // namespace mechanism_detail
