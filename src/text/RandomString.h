#pragma once

#include <QString>

/// `length` characters at random from letters and digits; the id of a post that no server has seen has 8.
QString genRandString(int length);
/// A new UUID in text form, in upper case.
QString stringByGeneratingUUID();
