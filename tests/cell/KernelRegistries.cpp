#include <sanitizer/lsan_interface.h>

#include <STEPControl_Controller.hxx>

// The kernel's part readers make registries on first use and keep them until the process ends. Made here,
// they are no leaks of whatever happens to read the first file.

namespace {

const bool areMade = [] {
    __lsan_disable();
    STEPControl_Controller::Init();
    __lsan_enable();
    return true;
}();

} // namespace
