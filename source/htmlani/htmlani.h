#pragma once

#include "htmlani/animation.h"
#include "htmlani/animationthread.h"
#include "htmlani/easing.h"
