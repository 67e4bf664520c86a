#include "Tour.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>

namespace {

/// What stands in `after` at the place of what stands in `before`; both texts are the same around it.
std::pair<QString, QString> changeBetween(const QString &before, const QString &after)
{
    qsizetype start = 0, end = 0;
    const qsizetype shorter = std::min(before.size(), after.size());
    while (start < shorter && before[start] == after[start])
        ++start;
    while (end < shorter - start && before[before.size() - 1 - end] == after[after.size() - 1 - end])
        ++end;
    return {before.mid(start, before.size() - start - end), after.mid(start, after.size() - start - end)};
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
    connectTo(m_options.url);
}

void Tour::connectTo(const QUrl &blog)
{
    m_screen.connectTo(blog.toString(), m_options.user, m_options.password);
    m_screen.waitUntilGone("blogIsConnectedSheet");
    if (blog == m_options.url)
        m_screen.click("getStartedDoneButton");
    m_screen.waitFor("the first posts", [this] { return !m_screen.rowTitles().isEmpty(); });
    m_screen.waitUntilGone("syncBar");
}

void Tour::checkList()
{
    QStringList expected, shown = m_screen.rowTitles();
    for (const QString type : {"post", "page"})
        for (const XMLRPCValue &post : m_blog.posts(type)) {
            const QString title = post[u"post_title"].string(), id = post[u"post_id"].string();
            expected.append(title.isEmpty() ? "No title" : title);
            require(!postFile(id).isNull(), "post " + id + " has no file");
        }
    shown.sort();
    expected.sort();
    require(shown == expected, "the list shows " + shown.join(" | ") + " and the blog has " + expected.join(" | "));
}

void Tour::openAll()
{
    XMLRPCArray all = m_blog.posts();
    for (XMLRPCValue &page : m_blog.posts("page"))
        all.push_back(std::move(page));
    for (const XMLRPCValue &post : all) {
        const QString shown = post[u"post_title"].string(), stored = post[u"post_content"].string();
        const QString file = postFile(post[u"post_id"].string());
        const QByteArray before = contentsOf(file);
        m_screen.clickRow(shown.isEmpty() ? "No title" : shown);
        m_screen.waitFor("“" + shown + "” to open", [&] { return m_screen.shownTitle() == shown; });
        QTest::qWait(200); // the page takes the body a moment after the title shows
        m_screen.waitFor("the page", [this] { return !m_screen.bodyContent().isNull(); });
        const auto [replaced, inserted] = changeBetween(stored, m_screen.bodyContent());
        require(replaced.isEmpty() && inserted.isEmpty(),
            "“" + shown + "”: “" + replaced.left(60) + "” became “" + inserted.left(60) + "”");
        require(contentsOf(file) == before, "opening “" + shown + "” changed its file");
    }
}

void Tour::openPost(const QString &title, const QString &words)
{
    m_screen.clickRow(title);
    m_screen.waitFor("“" + title + "” to open", [&] { return m_screen.shownTitle() == title; });
    m_screen.waitForPage(words);
}

void Tour::refreshList()
{
    m_screen.shortcut("F5");
    m_screen.widget("syncBar");
    m_screen.waitUntilGone("syncBar");
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

void Tour::writePost(const QString &title, const QString &text)
{
    startNewPost();
    m_screen.type("titleField", title);
    m_screen.press(Qt::Key_Tab);
    m_screen.typeInPage(text);
}

void Tour::upload(const QString &button)
{
    m_screen.click(button);
    m_screen.widget("uploadOverlay");
    m_screen.waitUntilGone("uploadOverlay");
}

XMLRPCValue Tour::publishAndFind(const QString &title)
{
    upload("publishButton");
    const XMLRPCValue post = m_blog.postWithTitle(title);
    require(post[u"post_status"].string() == "publish",
        "“" + title + "” is “" + post[u"post_status"].string() + "” on the blog");
    checkFileInStep(post, "publish");
    return post;
}

void Tour::writeNew()
{
    writePost(title("The tour's new post"), "First line & more.\nSecond ");
    m_screen.waitForPage("Second");
    m_screen.shortcut("Ctrl+B");
    m_screen.waitForButton("Bold");
    m_screen.typeInPage("line");
    m_screen.type("tokenField", "Tour category,#tour-tag,");
    const XMLRPCValue post = publishAndFind(title("The tour's new post"));
    const QString body = post[u"post_content"].string();
    require(body.contains("First line &amp; more.")
            && body.contains(QRegularExpression("Second <(b|strong)>line</(b|strong)>")),
        "the blog has this body: " + body);
    QStringList terms;
    for (const XMLRPCValue &term : post[u"terms"].array())
        terms.append(term[u"taxonomy"].string() + ':' + term[u"name"].string());
    require(terms.contains("category:Tour category") && terms.contains("post_tag:tour-tag"),
        "the blog has these terms: " + terms.join(", "));
}

void Tour::publishPicture()
{
    m_toDelete = title("The tour's picture");
    const QString picture = m_options.out + "/it's a picture.jpg";
    QImage drawn(640, 400, QImage::Format_RGB32);
    drawn.fill(QColor("#2f6f8f"));
    drawn.save(picture);
    writePost(m_toDelete, "A picture:\n");
    m_screen.click("importButton");
    QPointer<QFileDialog> panel;
    m_screen.waitFor(
        "the open panel", [&] { return (panel = m_screen.window().findChild<QFileDialog *>()) && panel->isVisible(); });
    // Set at once and not typed, since the panel's completions take clicks and Return for themselves.
    panel->findChild<QLineEdit *>("fileNameEdit")->setText(QFileInfo(picture).absoluteFilePath());
    QTest::mouseClick(panel->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Open), Qt::LeftButton);
    m_screen.waitForPage("<img");
    const QString body = publishAndFind(m_toDelete)[u"post_content"].string();
    const auto source = QRegularExpression("<img[^>]*src=\"(http[^\"]+)\"").match(body);
    require(source.hasMatch() && !body.contains("file://"), "the blog has this body: " + body);
    require(m_blog.download(QUrl(source.captured(1))).size() >= 500, "the blog does not serve " + source.captured(1));
}

void Tour::updateBlockPost()
{
    const QString shown = title("The tour's block post");
    const QString id = m_blog.newPost(shown, blockPost, "publish");
    const QString before = m_blog.post(id)[u"post_content"].string();
    refreshList();
    openPost(shown, "The last paragraph");
    m_screen.focusPage();
    m_screen.pressInPage(Qt::Key_End, Qt::ControlModifier);
    m_screen.typeInPage(" changed");
    m_screen.waitForPage("changed");
    const auto [replaced, inserted] = changeBetween(before, publishAndFind(shown)[u"post_content"].string());
    require(replaced.isEmpty() && inserted.simplified() == "changed",
        "“" + replaced.left(60) + "” became “" + inserted.left(60) + "”");
}

void Tour::saveDraft()
{
    const QString shown = title("The tour's draft");
    writePost(shown, "Not ready yet.");
    upload("saveButton");
    const XMLRPCValue draft = m_blog.postWithTitle(shown);
    checkFileInStep(draft, "draft");
    require(draft[u"post_status"].string() == "draft", "the draft is “" + draft[u"post_status"].string() + "”");
    require(publishAndFind(shown)[u"post_id"].string() == draft[u"post_id"].string(),
        "publishing the draft made a second post");
}

void Tour::deletePost()
{
    require(!m_toDelete.isNull(), "this step takes away the post of the step “image”, which did not run");
    const QString id = m_blog.postWithTitle(m_toDelete)[u"post_id"].string();
    openPost(m_toDelete, "A picture");
    m_screen.click("deleteButton");
    m_screen.click("confirmDeleteButton");
    m_screen.waitFor("the row to go", [this] { return !m_screen.rowTitles().contains(m_toDelete); });
    require(m_blog.postWithTitle(m_toDelete).isAbsent(), "the blog still has post " + id);
    require(postFile(id).isNull(), "the file of post " + id + " is still there");
}
