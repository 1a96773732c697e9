#pragma once

#include <mechanism/AxisVocabulary.h>
#include <mechanism/ContextState.h>
#include <mechanism/GrpConfig.h>
#include <mechanism/GrpState.h>
#include <mechanism/InterpHandle.h>
#include <mechanism/RobotEntity.h>
#include <mechanism/RobotWorkspace.h>
#include <mechanism/ToolEntity.h>
