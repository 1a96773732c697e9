#pragma once

// The mesh presentation's earlier place, for hosts that include it by that name.
#include <host/view/AIS_Mesh.h>
