#include "library/AppFinder.h"

namespace quillbay {

void AppFinder::updateNewlyAddedApps() {}
void AppFinder::saveNewlyAdded() {}
void AppFinder::loadNewlyAdded() {}

} // namespace quillbay
