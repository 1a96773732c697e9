#pragma once

#include <AIS_InteractiveContext.hxx>

/// The interactive context in which view shapes appear. Without one (tests, servers) every view shape keeps
/// its own state and draws nothing.
namespace ViewContext {

/// Shapes displayed from now on appear in this context; null detaches. Shapes that already live in another
/// context stay there.
void SetCurrent(const opencascade::handle<AIS_InteractiveContext>& context);
const opencascade::handle<AIS_InteractiveContext>& GetCurrent();

} // namespace ViewContext
