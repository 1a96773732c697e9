#pragma once

// Headers that nearly every test of the library needs.

#include <cmath>
#include <gmock/gmock.h>
#include <host/tools/CADParamConfig.h>
#include <host/tools/gpHandle.h>
#include <mechanism/mechanism.h>
#include <support/Failure.h>
#include <support/Registrar.h>
#include <support/SampleMechanisms.h>
#include <support/SampleTools.h>
#include <support/TrsfMatcher.h>
