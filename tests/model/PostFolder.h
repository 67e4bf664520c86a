#pragma once

#include "model/ZLDocumentController.h"
#include "support/Files.h"
#include "support/TestClasses.h"

#include <QTemporaryDir>
#include <QUrl>

/// A folder for the post files of one test.
class PostFolder {
public:
    QString path(const QString &name = u"post.zalmo"_qs) const { return m_folder.filePath(name); }
    QUrl url(const QString &name = u"post.zalmo"_qs) const { return QUrl::fromLocalFile(path(name)); }

    QUrl write(const QByteArray &bytes, const QString &name = u"post.zalmo"_qs) const
    {
        writeFile(path(name), bytes);
        return url(name);
    }
    QByteArray read(const QString &name = u"post.zalmo"_qs) const { return contentsOf(path(name)); }
    bool has(const QString &name) const { return QFile::exists(path(name)); }

private:
    QTemporaryDir m_folder;
};

/// The document of the file as everybody else gets it; null when it does not open.
inline DocumentPtr openedBy(ZLDocumentController &documents, const QUrl &url)
{
    return QCoro::waitFor(documents.openDocumentWithContentsOfURL(url)).value_or(nullptr);
}

/// A post file with the given parts, in the form that the program writes.
struct FileText {
    QByteArray title = "Title";
    QByteArray content = "Body";
    QByteArray keywords;
    QByteArray engine = "wordpress";
    QByteArray id = "12";
    QByteArray status = "publish";
    QByteArray type = "post";
    QByteArray createdAt = "2014-10-21 09:30:00 +0000";
    QByteArray updatedAt = "2014-10-22 09:30:00 +0000";
    QByteArray fileInfo = "<app_version>3</app_version>";

    QByteArray bytes() const
    {
        return "<zalmo><post><title>" + title + "</title><content>" + content + "</content><keywords>" + keywords
            + "</keywords></post><post_info><engine>" + engine + "</engine><id>" + id + "</id><status>" + status
            + "</status><type>" + type + "</type><created_at>" + createdAt + "</created_at><updated_at>" + updatedAt
            + "</updated_at><author_id>1</author_id><URL>http://blog.example/?p=12&amp;x=1</URL><allow_comments>1"
              "</allow_comments><allow_pingback>0</allow_pingback><slug>a-slug</slug><featured_image></featured_image>"
              "</post_info><file_info>"
            + fileInfo + "</file_info></zalmo>";
    }
};