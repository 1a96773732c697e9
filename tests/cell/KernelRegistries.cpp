#include <sanitizer/lsan_interface.h>

#include <STEPControl_Controller.hxx>

// The kernel's part readers create registries on first use and keep them until the process ends. They are
// created here, so that the leak detector does not attribute them to the first test that reads a file.

namespace {

const bool areMade = [] {
    __lsan_disable();
    STEPControl_Controller::Init();
    __lsan_enable();
    return true;
}();

} // namespace
