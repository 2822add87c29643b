#include "platform/linux/updates/dialogs/ReleaseNotes.h"

#include "ui/QtConversions.h"
#include "ui/UiColors.h"
#include "ui/UiText.h"

#include <QDesktopServices>
#include <QEvent>
#include <QFontDatabase>
#include <QTextBlock>
#include <QTextList>

#include <array>
#include <map>

namespace glimmerly {

namespace {

/// What the notes say in HTML; loads nothing.
class Source : public QTextDocument {
protected:
    QVariant loadResource(int, const QUrl&) override { return {}; }
};

/// Copies structure and emphasis of a document, and nothing else of it.
class PlainCopy {
public:
    PlainCopy(QTextDocument& to, const QColor& link) : cursor_(&to), link_(link) {}

    void copy(const QTextDocument& from) {
        for (auto block = from.begin(); block.isValid(); block = block.next())
            copyBlock(block);
    }

private:
    void copyBlock(const QTextBlock& block) {
        QTextBlockFormat format;
        format.setHeadingLevel(block.blockFormat().headingLevel());
        constexpr double spacing = 6;
        format.setBottomMargin(spacing);
        if (isFirst_)
            cursor_.setBlockFormat(format);
        else
            cursor_.insertBlock(format, QTextCharFormat());
        isFirst_ = false;
        if (const auto* list = block.textList())
            addToList(*list);
        for (auto part = block.begin(); !part.atEnd(); ++part)
            copyText(part.fragment(), format.headingLevel());
    }

    void addToList(const QTextList& list) {
        auto& copy = lists_[&list];
        if (copy == nullptr) {
            QTextListFormat format;
            format.setStyle(list.format().style());
            format.setIndent(list.format().indent());
            copy = cursor_.createList(format);
        } else {
            copy->add(cursor_.block());
        }
    }

    void copyText(const QTextFragment& fragment, int headingLevel) {
        QString text = fragment.text();
        text.remove(QChar::ObjectReplacementCharacter); // where a picture was
        const QTextCharFormat from = fragment.charFormat();
        QTextCharFormat format;
        format.setFontItalic(from.fontItalic());
        format.setFontWeight(from.fontWeight() > QFont::Normal ? QFont::DemiBold : QFont::Normal);
        if (from.fontFixedPitch() || from.fontFamilies().toStringList().contains("monospace"))
            format.setFontFamilies({QFontDatabase::systemFont(QFontDatabase::FixedFont).family()});
        if (headingLevel > 0) {
            constexpr std::array sizes{4, 2, 1, 0, 0, 0};
            format.setProperty(QTextFormat::FontSizeAdjustment, sizes.at(std::size_t(headingLevel - 1)) / 2);
            format.setFontWeight(QFont::DemiBold);
        }
        const QUrl url(from.anchorHref());
        if (url.scheme() == "https") {
            format.setAnchor(true);
            format.setAnchorHref(url.toString());
            format.setFontUnderline(true);
            format.setForeground(link_);
        }
        cursor_.insertText(text, format);
    }

    QTextCursor cursor_;
    QColor link_;
    bool isFirst_ = true;
    std::map<const QTextList*, QTextList*> lists_;
};

} // namespace

ReleaseNotes::ReleaseNotes(const std::string& notes, NotesFormat format, QWidget* parent)
    : QTextBrowser(parent), notes_(toQString(notes)), format_(format) {
    setOpenLinks(false);
    constexpr double margin = 8;
    document()->setDocumentMargin(margin);
    constexpr double indent = 20; // of lists
    document()->setIndentWidth(indent);
    setViewportMargins(0, 1, 0, 1); // of the frame around it
    setFont(uiFont(text_style::body));
    setAccessibleName("Release notes");
    connect(this, &QTextBrowser::anchorClicked, this, [](const QUrl& url) {
        if (url.scheme() == "https")
            QDesktopServices::openUrl(url);
    });
    fill();
}

void ReleaseNotes::fill() {
    document()->clear();
    if (format_ == NotesFormat::plainText) {
        document()->setPlainText(notes_);
        return;
    }
    Source source;
    source.setHtml(notes_);
    PlainCopy(*document(), uiColors(*this).link).copy(source);
    moveCursor(QTextCursor::Start); // what is written moves the view's own cursor on, and the view with it
}

void ReleaseNotes::changeEvent(QEvent* event) {
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        fill();
}

QVariant ReleaseNotes::loadResource(int, const QUrl&) {
    return {};
}

} // namespace glimmerly
