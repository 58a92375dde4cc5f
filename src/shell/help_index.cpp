#include "shell/help_index.h"

#include <QFile>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>

#include <algorithm>
#include <map>

namespace
{

QString Folded(const QString &word)
{
    QString folded = word.normalized(QString::NormalizationForm_KD).toCaseFolded();
    folded.removeIf([](QChar c) { return c.isMark(); });
    return folded.replace(QChar(0x2019), QLatin1Char('\'')); // the printed apostrophe
}

QRegularExpressionMatchIterator WordsIn(const QString &text)
{
    static const QRegularExpression word(QStringLiteral(
        "[\\p{L}\\p{N}][\\p{L}\\p{M}\\p{N}]*(?:[&'\\x{2019}][\\p{L}\\p{M}\\p{N}]+)*"));
    return word.globalMatch(text);
}

bool HoldsStart(const QStringList &words, const QString &start)
{
    return std::any_of(words.begin(), words.end(),
                       [&start](const QString &word) { return word.startsWith(start); });
}

bool ReadPage(const QString &path, QTextDocument &document)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    document.setHtml(QString::fromUtf8(file.readAll()));
    return true;
}

/// The links of the start page's list, with their words.
QList<HelpTopic> LinksOfList(const QTextDocument &document)
{
    QTextBlock block = document.begin();
    while (block.isValid() && !block.textList())
        block = block.next();
    QList<HelpTopic> links;
    for (int item = 0; block.isValid() && item < block.textList()->count(); ++item) {
        const QTextBlock line = block.textList()->item(item);
        for (auto part = line.begin(); !part.atEnd(); ++part) {
            QString link = part.fragment().charFormat().anchorHref();
            if (link.startsWith(QLatin1Char('#')))
                link.prepend(HelpStartPage);
            if (!links.isEmpty() && links.last().Link == link) // goes on in another font
                links.last().Title += part.fragment().text();
            else if (!link.isEmpty())
                links << HelpTopic{link, part.fragment().text()};
        }
    }
    return links;
}

} // namespace

QStringList SearchWords(const QString &text)
{
    QStringList words;
    for (QRegularExpressionMatchIterator found = WordsIn(text); found.hasNext();)
        words << Folded(found.next().captured());
    words.removeDuplicates();
    return words;
}

QList<WordPlace> PlacesOf(const QStringList &searched, const QString &text)
{
    QList<WordPlace> places;
    for (QRegularExpressionMatchIterator found = WordsIn(text); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const QString word = Folded(match.captured());
        if (std::any_of(searched.begin(), searched.end(),
                        [&word](const QString &start) { return word.startsWith(start); }))
            places << WordPlace{int(match.capturedStart()), int(match.capturedLength())};
    }
    return places;
}

HelpIndex::HelpIndex(const QString &folder)
{
    QTextDocument start;
    if (!ReadPage(folder + QLatin1Char('/') + HelpStartPage, start))
        return;
    AddPage(folder, HelpStartPage);
    for (const HelpTopic &link : LinksOfList(start)) {
        const bool isKnown =
            std::any_of(m_contents.begin(), m_contents.end(),
                        [&link](const HelpTopic &known) { return known.Link == link.Link; });
        if (isKnown)
            continue;
        if (link.Link.contains(QLatin1Char('#')))
            m_contents << link;
        else
            AddPage(folder, link.Link);
    }
}

void HelpIndex::AddPage(const QString &folder, const QString &file)
{
    QTextDocument document;
    if (!ReadPage(folder + QLatin1Char('/') + file, document))
        return;
    const QString title = document.metaInformation(QTextDocument::DocumentTitle);
    Page page;
    page.Topic = {file, title.isEmpty() ? file : title};
    page.Words[Title] = SearchWords(title);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const bool isHeading = block.blockFormat().headingLevel() > 0;
        page.Words[isHeading ? Heading : Text] << SearchWords(block.text());
    }
    m_contents << page.Topic;
    m_pages << page;
}

int HelpIndex::NearestPlace(const Page &page, const QString &word)
{
    int place = Title;
    while (place < Nowhere && !HoldsStart(page.Words[place], word))
        ++place;
    return place;
}

QList<HelpTopic> HelpIndex::Search(const QString &text) const
{
    const QStringList words = SearchWords(text);
    if (words.isEmpty())
        return {};
    std::multimap<int, HelpTopic> found; // by distance from the title; equals keep their order
    for (const Page &page : m_pages) {
        int distance = 0;
        bool holdsAll = true;
        for (const QString &word : words) {
            const int place = NearestPlace(page, word);
            distance += place;
            holdsAll = holdsAll && place != Nowhere;
        }
        if (holdsAll)
            found.emplace(distance, page.Topic);
    }
    QList<HelpTopic> topics;
    for (const auto &[distance, topic] : found)
        topics << topic;
    return topics;
}
