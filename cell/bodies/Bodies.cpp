#include <TopLoc_Location.hxx>
#include <cell/bodies/Bodies.h>
#include <cell/bodies/Solids.h>
#include <cell/documents/Frames.h>

namespace cell {

opencascade::handle<ShapeEntity> MakeModel(const Body& body, const Rigid& linkInEntity) {
    const TopLoc_Location inLink(Inverse(linkInEntity).ToTrsf());
    opencascade::handle<ShapeEntity> model = new ShapeEntity(body.shape.Moved(inLink), Uuid::CreateUuid());
    model->SetMaterial(Graphic3d_NOM_PLASTIC);
    model->SetColor(body.colour);
    model->countsForExtents = !body.background;
    return model;
}

void AddBase(const std::vector<Body>& bodies, GenericEntityConfig& structure) {
    structure.SetEntityShape(new ShapeEntity(Assembly().Shape(), Uuid::CreateUuid()));
    for (const Body& body : bodies) {
        structure.AddFixMdl(MakeModel(body, Rigid()));
    }
}

} // namespace cell
