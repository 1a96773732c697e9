#include <host/view/ViewContext.h>

namespace {
opencascade::handle<AIS_InteractiveContext>& Current() {
    static opencascade::handle<AIS_InteractiveContext> context;
    return context;
}
} // namespace

void ViewContext::SetCurrent(const opencascade::handle<AIS_InteractiveContext>& context) {
    Current() = context;
}

const opencascade::handle<AIS_InteractiveContext>& ViewContext::GetCurrent() { return Current(); }
