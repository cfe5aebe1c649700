// Which sessions are open: nothing else works while there is none.
#pragma once

namespace imaginglibrary {

// Whether at least one session is open.
bool HasSession();

// From now on `clear` is called whenever the last session ends. It must not open or close sessions.
void CallAtLastShutdown(void (*clear)());

} // namespace imaginglibrary
