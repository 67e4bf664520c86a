#include "Tour.h"

#include "support/Files.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>

namespace {

/// The text that stands in `after` at the place of `replaced` in `before`; both texts are the same around it.
struct Change {
    QString replaced;
    QString inserted;
};

Change changeBetween(const QString &before, const QString &after)
{
    qsizetype start = 0, end = 0;
    const qsizetype shorter = std::min(before.size(), after.size());
    while (start < shorter && before[start] == after[start])
        ++start;
    while (end < shorter - start && before[before.size() - 1 - end] == after[after.size() - 1 - end])
        ++end;
    return {before.mid(start, before.size() - start - end), after.mid(start, after.size() - start - end)};
}

QString firstDifference(const QString &expected, const QString &got)
{
    const Change change = changeBetween(expected, got);
    return "“" + change.replaced.left(60) + "” became “" + change.inserted.left(60) + "”";
}

const char *const blockPost = R"(<!-- wp:paragraph {"dropCap":true} -->
<p class="has-drop-cap">Plain <strong>words</strong> &amp; an entity,  two blanks.</p>
<!-- /wp:paragraph -->

<!-- wp:columns -->
<div class="wp-block-columns"><!-- wp:column -->
<div class="wp-block-column"><!-- wp:paragraph -->
<p>A column's text</p>
<!-- /wp:paragraph --></div>
<!-- /wp:column --></div>
<!-- /wp:columns -->

<!-- wp:more -->
<!--more-->
<!-- /wp:more -->

<!-- wp:code -->
<pre class="wp-block-code"><code>a &lt; b &amp;&amp; c</code></pre>
<!-- /wp:code -->

<!-- wp:html -->
<form action="#"><input type='text' name=q></form>
<!-- /wp:html -->

<!-- wp:paragraph -->
<p>The last paragraph</p>
<!-- /wp:paragraph -->)";

} // namespace

void Tour::connectBlog()
{
    m_screen.activate();
    m_screen.expectAlert("keychain"); // where the desktop has none
    connectTo(m_options.url, true);
}

void Tour::connectTo(const QUrl &blog, bool isFirst)
{
    m_screen.type("blogURLField", blog.toString());
    m_screen.press(Qt::Key_Return);
    m_screen.type("usernameField", m_options.user);
    m_screen.type("passwordField", m_options.password);
    m_screen.screenshot("connect-login");
    m_screen.press(Qt::Key_Return);
    m_screen.waitFor("the blog to be connected", [this] { return m_screen.isVisible("blogIsConnectedSheet"); });
    m_screen.screenshot("connect-success");
    m_screen.waitFor("the sheet to go", [this] { return !m_screen.isVisible("blogIsConnectedSheet"); });
    if (isFirst)
        m_screen.click("getStartedDoneButton");
    m_screen.waitFor("the first posts", [this] { return !m_screen.rowTitles().isEmpty(); });
    m_screen.waitFor("the first sync to end", [this] { return !m_screen.isVisible("syncBar"); });
}

void Tour::checkList()
{
    QStringList expected;
    for (const QString &type : {u"post"_qs, u"page"_qs})
        for (const XMLRPCValue &post : m_blog.posts(type)) {
            const QString shown = post[u"post_title"].string();
            expected.append(shown.isEmpty() ? "No title" : shown);
            if (postFile(post[u"post_id"].string()).isNull())
                throw TourFailure("post " + post[u"post_id"].string() + " has no file");
        }
    QStringList shown = m_screen.rowTitles();
    shown.sort();
    expected.sort();
    if (shown != expected)
        throw TourFailure("the list shows " + shown.join(" | ") + " and the blog has " + expected.join(" | "));
}

void Tour::openAll()
{
    XMLRPCArray all = m_blog.posts();
    for (XMLRPCValue &page : m_blog.posts("page"))
        all.push_back(std::move(page));
    for (const XMLRPCValue &post : all) {
        const QString shown = post[u"post_title"].string(), id = post[u"post_id"].string();
        const QByteArray before = contentsOf(postFile(id));
        if (before.isEmpty())
            throw TourFailure("post " + id + " has no file");
        m_screen.clickRow(shown.isEmpty() ? "No title" : shown);
        m_screen.waitFor("“" + shown + "” to open", [&] { return m_screen.shownTitle() == shown; });
        const QString stored = post[u"post_content"].string();
        QTest::qWait(200); // the page takes the body a moment after the title shows
        m_screen.waitFor("the page", [this] { return !m_screen.bodyContent().isNull(); });
        if (const QString content = m_screen.bodyContent(); content != stored)
            throw TourFailure(
                "“" + shown + "” does not come back as it was stored: " + firstDifference(stored, content));
        if (contentsOf(postFile(id)) != before)
            throw TourFailure("opening “" + shown + "” changed its file");
    }
}

void Tour::refreshList()
{
    m_screen.shortcut("F5");
    m_screen.waitFor("the sync to begin", [this] { return m_screen.isVisible("syncBar"); });
    m_screen.waitFor("the sync to end", [this] { return !m_screen.isVisible("syncBar"); });
}

void Tour::startNewPost()
{
    const auto isBlank = [this] { return m_screen.shownTitle().isEmpty() && m_screen.bodyContent().isEmpty(); };
    // On a blank post the command does nothing, on purpose.
    if (isBlank())
        return;
    m_screen.shortcut("Ctrl+N");
    m_screen.waitFor("a new row", [this] { return m_screen.rowTitles().value(0) == "No title"; });
    m_screen.waitFor("an empty screen", isBlank);
}

void Tour::chooseFile(const QString &path)
{
    QFileDialog *panel = nullptr;
    m_screen.waitFor(
        "the open panel", [&] { return (panel = m_screen.window().findChild<QFileDialog *>()) && panel->isVisible(); });
    // Set at once and not typed, since the panel's completions take clicks and Return for themselves.
    panel->findChild<QLineEdit *>("fileNameEdit")->setText(path);
    QTest::mouseClick(panel->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Open), Qt::LeftButton);
    m_screen.waitFor("the open panel to close", [panel = QPointer(panel)] { return !panel || !panel->isVisible(); });
}

XMLRPCValue Tour::publishAndFind(const QString &title)
{
    m_screen.click("publishButton");
    m_screen.waitFor("the upload to begin", [this] { return m_screen.isVisible("uploadOverlay"); });
    m_screen.waitFor("the upload to end", [this] { return !m_screen.isVisible("uploadOverlay"); });
    const XMLRPCValue post = m_blog.postWithTitle(title);
    if (post.isAbsent())
        throw TourFailure("the blog has no post “" + title + "” " + m_blog.lastError());
    if (post[u"post_status"].string() != "publish")
        throw TourFailure("“" + title + "” is " + post[u"post_status"].string() + " on the blog");
    checkFileInStep(post, "publish");
    return post;
}

void Tour::writeNew()
{
    startNewPost();
    m_screen.type("titleField", title("The tour's new post"));
    m_screen.press(Qt::Key_Tab);
    m_screen.typeInPage("First line & more.\nSecond ");
    m_screen.waitForPage("Second");
    m_screen.shortcut("Ctrl+B");
    m_screen.waitForButton("Bold");
    m_screen.typeInPage("line");
    m_screen.type("tokenField", "Tour category,#tour-tag,");
    const XMLRPCValue post = publishAndFind(title("The tour's new post"));
    const QString body = post[u"post_content"].string();
    if (!body.contains("First line &amp; more.")
        || !body.contains(QRegularExpression("Second <(b|strong)>line</(b|strong)>")))
        throw TourFailure("the blog has this body: " + body);
    QStringList terms;
    for (const XMLRPCValue &term : post[u"terms"].array())
        terms.append(term[u"taxonomy"].string() + ':' + term[u"name"].string());
    if (!terms.contains("category:Tour category") || !terms.contains("post_tag:tour-tag"))
        throw TourFailure("the blog has these terms: " + terms.join(", "));
}

void Tour::publishPicture()
{
    m_toDelete = title("The tour's picture");
    const QString picture = m_options.out + "/it's a picture.jpg";
    QImage drawn(640, 400, QImage::Format_RGB32);
    drawn.fill(QColor("#2f6f8f"));
    drawn.save(picture);
    startNewPost();
    m_screen.type("titleField", m_toDelete);
    m_screen.press(Qt::Key_Tab);
    m_screen.typeInPage("A picture:\n");
    m_screen.click("importButton");
    chooseFile(QFileInfo(picture).absoluteFilePath());
    m_screen.waitForPage("<img");
    const QString body = publishAndFind(m_toDelete)[u"post_content"].string();
    const auto source = QRegularExpression("<img[^>]*src=\"(http[^\"]+)\"").match(body);
    if (!source.hasMatch() || body.contains("file://"))
        throw TourFailure("the blog has this body: " + body);
    if (m_blog.download(QUrl(source.captured(1))) < 500)
        throw TourFailure("the blog does not serve " + source.captured(1));
}

void Tour::updateBlockPost()
{
    const QString shown = title("The tour's block post");
    const QString stored = QString::fromUtf8(blockPost);
    const QString id =
        m_blog.newPost({{"post_title", shown}, {"post_content", stored}, {"post_status", QString("publish")}});
    if (id.isEmpty())
        throw TourFailure("the blog takes no post: " + m_blog.lastError());
    const QString before = m_blog.post(id)[u"post_content"].string();
    refreshList();
    m_screen.clickRow(shown);
    m_screen.waitForPage("The last paragraph");
    m_screen.focusPage();
    m_screen.pressInPage(Qt::Key_End, Qt::ControlModifier);
    m_screen.typeInPage(" changed");
    m_screen.waitFor("the change to reach the page", [this] { return m_screen.bodyContent().contains("changed"); });
    publishAndFind(shown);
    const QString after = m_blog.post(id)[u"post_content"].string();
    const Change change = changeBetween(before, after);
    if (!change.replaced.isEmpty() || change.inserted.simplified() != "changed")
        throw TourFailure(firstDifference(before, after));
}

void Tour::saveDraft()
{
    const QString shown = title("The tour's draft");
    startNewPost();
    m_screen.type("titleField", shown);
    m_screen.press(Qt::Key_Tab);
    m_screen.typeInPage("Not ready yet.");
    m_screen.click("saveButton");
    m_screen.waitFor("the upload to begin", [this] { return m_screen.isVisible("uploadOverlay"); });
    m_screen.waitFor("the upload to end", [this] { return !m_screen.isVisible("uploadOverlay"); });
    const XMLRPCValue draft = m_blog.postWithTitle(shown);
    if (draft[u"post_status"].string() != "draft")
        throw TourFailure("“" + shown + "” is “" + draft[u"post_status"].string() + "” on the blog");
    checkFileInStep(draft, "draft");
    const XMLRPCValue published = publishAndFind(shown);
    if (published[u"post_id"].string() != draft[u"post_id"].string())
        throw TourFailure("publishing the draft made a second post");
}

void Tour::deletePost()
{
    if (m_toDelete.isNull())
        throw TourFailure("this step takes away the post of the step “image”, which did not run");
    const QString id = m_blog.postWithTitle(m_toDelete)[u"post_id"].string();
    if (id.isEmpty())
        throw TourFailure("the blog has no post “" + m_toDelete + "” to delete");
    m_screen.clickRow(m_toDelete);
    m_screen.waitFor("“" + m_toDelete + "” to open", [this] { return m_screen.shownTitle() == m_toDelete; });
    m_screen.click("deleteButton");
    m_screen.screenshot("delete-question");
    m_screen.click("confirmDeleteButton");
    m_screen.waitFor("the row to go", [this] { return !m_screen.rowTitles().contains(m_toDelete); });
    if (!m_blog.postWithTitle(m_toDelete).isAbsent())
        throw TourFailure("the blog still has post " + id);
    if (!postFile(id).isNull())
        throw TourFailure("the file of post " + id + " is still there");
}
