#pragma once

#include <mechanism/AxisVocabulary.h>
#include <mechanism/BenchEntity.h>
#include <mechanism/ContextState.h>
#include <mechanism/GrpConfig.h>
#include <mechanism/GrpState.h>
#include <mechanism/GrpStateUtils.h>
#include <mechanism/InterpHandle.h>
#include <mechanism/PedestalEntity.h>
#include <mechanism/RobotEntity.h>
#include <mechanism/RobotWorkspace.h>
#include <mechanism/ToolEntity.h>
