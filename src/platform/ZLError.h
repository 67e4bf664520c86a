#pragma once

#include <QString>
#include <tl/expected.hpp>

/// A failure as a value. Domains in use: "Response error" (a fault of the blog; `code` is its faultCode),
/// "HTTP" (`code` is the status), "NSURLErrorDomain" (network; -1001 time-out, -1003 host not found, ...),
/// "ZLFile" (a file or folder; the description names it), "ZLStore", "ZLKeychain".
struct ZLError {
    QString domain;
    int code = 0;
    QString description; ///< a sentence for the user, ready to be shown
};

/// What an operation gives, or why it failed. Failing: `return failure(domain, code, text);`
template <class T>
using Result = tl::expected<T, ZLError>;

[[nodiscard]] inline tl::unexpected<ZLError> failure(const QString &domain, int code, const QString &description)
{
    return tl::unexpected<ZLError>(ZLError{domain, code, description});
}
[[nodiscard]] inline tl::unexpected<ZLError> failure(const ZLError &error)
{
    return tl::unexpected<ZLError>(error);
}
