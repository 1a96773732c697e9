#pragma once

#include <AIS_InteractiveContext.hxx>

/// The interactive context in which view shapes appear. Without one (tests, servers) every view shape keeps
/// its own state and draws nothing.
namespace ViewContext {

/// Shapes displayed from now on appear in this context; null detaches. Shapes that another context already
/// displays stay there.
void SetCurrent(const opencascade::handle<AIS_InteractiveContext>& context);
/// The context set last, or null.
const opencascade::handle<AIS_InteractiveContext>& GetCurrent();

} // namespace ViewContext
