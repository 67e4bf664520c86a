#pragma once

#include "support/FakeBlog.h"

/// What a pretended blog holds, in the forms in which WordPress gives it out.
class FakeBlogStructs {
public:
    explicit FakeBlogStructs(const FakeBlog &blog)
        : m_blog(blog)
    {
    }

    XMLRPCStruct post(const FakeBlog::Post &post) const; ///< as the wp family has it
    XMLRPCStruct metaWeblogPost(const FakeBlog::Post &post) const;
    static XMLRPCStruct term(const FakeBlog::Term &term);
    /// The names of terms are kept escaped and given out so.
    static QString escaped(const QString &text);

private:
    XMLRPCValue thumbnail(const FakeBlog::Post &post) const;
    QString link(const FakeBlog::Post &post) const;

    const FakeBlog &m_blog;
};
