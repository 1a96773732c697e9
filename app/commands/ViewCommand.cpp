#include <app/commands/Commands.h>
#include <app/view/ViewSession.h>

namespace cell {

void View(const ViewRequest& request) {
    const Cell cell = Cell::Load(request.file);
    ViewSession(cell).Run();
}

} // namespace cell
