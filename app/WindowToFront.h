#pragma once

class QWidget;
struct StartupTokens;

/// Shows the window in front of all others and gives it the keyboard, as far as the desktop allows:
/// with what a launcher gave who asks for it, it does. A box that is open over the window gets the
/// keyboard. Tells the launcher that its wait is over. Main thread.
void bringToFront(QWidget& window, const StartupTokens& tokens);
