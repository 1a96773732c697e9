#include <host/workpiece/Workpiece.h>

Workpiece::Workpiece() { mechanismType = MechanismWorkpiece; }

Workpiece::Workpiece(GenericEntity* parent) : GenericEntityConfig(parent) {
    mechanismType = MechanismWorkpiece;
}
