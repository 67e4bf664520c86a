#pragma once

class ZLAppDelegate;

/// Brings the program up, in an order that matters: the posts are read before the selector exists.
void launch(ZLAppDelegate &app);
/// What may load plug-ins, and so comes behind the rows. A password that comes opens the login sheet or starts the
/// blog's first round. Only those two wait for the keychain.
void goOnline(ZLAppDelegate &app);
