#include "model/ZLPostCatalogue.h"

QList<LocalPostPtr> ZLPostCatalogue::postsFromLocalFiles(const QString &alias, const QDateTime &now)
{
    const QString folder = m_files.blogPath(alias);
    if (folder.isNull())
        return {};
    QList<LocalPostPtr> rows;
    for (const PostFolderReader::Found &found : m_reader.read(folder)) {
        auto row = std::make_shared<ZLLocalPostRepresentation>(found.file->row.row(found.file->localFile, now));
        // Whatever the file says: its twin tells that a decision waits.
        if (found.hasConflict)
            row->status = ZLLocalPostRepresentation::Conflict;
        rows.append(row);
    }
    return rows;
}
