#pragma once

// Threads. The library starts none and takes no lock.
// - InterpHandle, GrpStateUtils and the const members of states may run in any number of threads at once, on
//   inputs that they share, once set-up is over: the systems are registered, the coupling record of each one
//   exists (asking for a missing one makes it), and a surface that paths are checked against has been
//   measured to before (the first time divides it into triangles).
// - A state, context or trace that one thread changes belongs to that thread.
// - Entities, their view models and RobotWorkspace belong to one thread: even some of their queries move
//   models, and mounting reaches into other entities.

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
