#include "foundation/ObservableObject.h"
