#include "host/scripted_search.h"

namespace lorvane::host {

void ScriptedSearch::Ricerca() { risposta_ = answer_; }

}  // namespace lorvane::host
