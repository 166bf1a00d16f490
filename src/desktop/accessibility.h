#pragma once

namespace lineweir {

// Gives the widgets that this program draws a name, a role, a state and an action for screen
// readers and for testing tools. To be called once, when the application object exists.
void install_accessibility();

}  // namespace lineweir
