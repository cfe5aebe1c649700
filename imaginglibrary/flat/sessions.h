// Which sessions are open: nothing else works while there is none.
#pragma once

namespace imaginglibrary {

// Whether at least one session is open.
bool HasSession();

} // namespace imaginglibrary
