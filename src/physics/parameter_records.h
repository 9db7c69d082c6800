#pragma once
// All contact models and external forces that have a parameter record, for those who go through all of them.

#include "physics/archard_wear.h"
#include "physics/cohesion.h"
#include "physics/edinburgh_adhesion.h"
#include "physics/electrostatics.h"
#include "physics/heat_conduction.h"
#include "physics/hertz_mindlin_no_slip.h"
#include "physics/hysteretic_spring.h"
#include "physics/jkr.h"
#include "physics/leeds_adhesion.h"
#include "physics/linear_spring.h"
#include "physics/moving_plane.h"
#include "physics/parallel_bond.h"
#include "physics/temperature_update.h"
#include "physics/tribocharging.h"
