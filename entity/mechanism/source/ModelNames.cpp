#include "ModelNames.h"

#include "Format.h"

#include <host/workpiece/GenericEntity.h>

void mechanism_detail::NameModels(const GenericEntity& entity, const char* kind) {
    for (const auto& [key, model] : entity.GetFixMdlMap()) {
        model->SetName(format("{}:{} - 基座", kind, entity.GetName()));
    }
    for (int i = 0; i < entity.GetLinkSize(); ++i) {
        for (const auto& model : entity.GetLink(static_cast<std::size_t>(i))->models) {
            if (!model.IsNull()) {
                model->SetName(format("{}:{} - 轴{}", kind, entity.GetName(), i + 1));
            }
        }
    }
}
