#include <cell/Commands.h>
#include <cell/ViewSession.h>

namespace cell {

void View(const ViewRequest& request) {
    const Cell cell = Cell::Load(request.file);
    ViewSession(cell).Run();
}

} // namespace cell
