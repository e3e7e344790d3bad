#pragma once

// Qt Quick's animation classes, for which there is no public header. Theirs says `emit`, a word that the
// project's sources are built without.
#define emit
#include <private/qparallelanimationgroupjob_p.h>
#include <private/qquickanimation_p.h>
#include <private/qvariantanimation_p.h>
#undef emit
