#pragma once

// Forwards to the header's present folder, for hosts that include it by this name.
#include <host/view/AIS_Mesh.h>
