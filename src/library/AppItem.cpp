#include "library/AppItem.h"
