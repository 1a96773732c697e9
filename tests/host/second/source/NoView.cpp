#include <host/view/AIS_Mesh.h>
#include <host/view/ViewContext.h>

// Nothing is ever drawn: a context that is offered is not kept, and a mesh has no layers.

void ViewContext::SetCurrent(const opencascade::handle<AIS_InteractiveContext>& /*context*/) {}

const opencascade::handle<AIS_InteractiveContext>& ViewContext::GetCurrent() {
    static const opencascade::handle<AIS_InteractiveContext> none;
    return none;
}

namespace mesh {

void AIS_Mesh::Compute(const opencascade::handle<PrsMgr_PresentationManager>& /*manager*/,
                       const opencascade::handle<Graphic3d_Structure>& /*structure*/, int /*mode*/) {}
void AIS_Mesh::SetColor(const Quantity_Color& colour) { AIS_InteractiveObject::SetColor(colour); }
void AIS_Mesh::ComputeSelection(const opencascade::handle<SelectMgr_Selection>& /*selection*/, int /*mode*/) {
}

} // namespace mesh
