// A body cut into pieces, and each piece in the form for the page: the pieces joined are the body, and whatever became
// something else has its stored text.
#include "text/BodyPieces.h"
#include "text/ContentPasses.h"
#include "text/KeptForms.h"
#include "text/StoredText.h"
#include "text/TextDifference.h"
#include "textOf.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString body = textOf(data, size);
    const bool isBlockEditor = ContentPasses::isBlockEditorContent(body);
    KeptForms kept;
    QString joined;
    BodyPieces::isTooLarge(body);
    for (const BodyPiece &piece : BodyPieces::split(body)) {
        check(!piece.stored().isEmpty());
        joined += piece.stored();
        const qsizetype before = kept.texts().size();
        const QString html = ContentPasses::pieceForPage(piece.core, isBlockEditor, &kept);
        check(html.count(kept.mark()) == kept.texts().size() - before);
        for (qsizetype i = before; i < kept.texts().size(); ++i)
            check(piece.core.contains(kept.texts()[i]));
    }
    check(joined == body);
    check(sameStoredText(body, u'\n' + body + u' '));
    check(TextDifference::between(body, body + u'\n').isEmpty());
    return 0;
}
