#pragma once

#include <QStringView>

/// Reads a text as a truth value, as blogs and post files write it: true when, behind white space, a sign and zeros,
/// there is a digit from 1 to 9 or one of "Y", "y", "T" and "t".
bool readsTrue(QStringView text);
