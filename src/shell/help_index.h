#pragma once

/// What the help holds: its contents, and the words of its topics.
///
///     HelpIndex index("/opt/quillon/help");
///     index.Contents();           AboutQuillon.htm, "Quillon Help"; then its list, link by link
///     index.Search("depot FEE");  the topics with words that begin "depot" and "fee"
///
/// Both come from the start page's list, so a topic that is linked there is listed and found.
/// A folder without a start page gives an index without topics.

#include <QList>
#include <QString>
#include <QStringList>

#include <array>

inline const QString HelpStartPage = QStringLiteral("AboutQuillon.htm");

/// The words of a text as they are compared: without case and accents. "P&L" and "don't" are one.
QStringList SearchWords(const QString &text);

/// Where `text` has a word that begins with one of `searched` (SearchWords).
struct WordPlace
{
    int Start;
    int Length; ///< of the whole word
};
QList<WordPlace> PlacesOf(const QStringList &searched, const QString &text);

struct HelpTopic
{
    QString Link;  ///< a page, or a place in a page: "SignOn.html", "AboutQuillon.htm#five"
    QString Title; ///< the page's own; of a place, the words of the link
};

class HelpIndex
{
public:
    /// Reads the pages in `folder`; one that is missing is left out.
    explicit HelpIndex(const QString &folder);

    /// The start page, then what its list links to, in that order and each once.
    const QList<HelpTopic> &Contents() const { return m_contents; }
    /// The pages that hold every word of `text`, or one that begins with it. A word found in the
    /// title counts most, then one in a heading; equals stay in the order of the contents.
    /// Nothing for a text without words.
    QList<HelpTopic> Search(const QString &text) const;

private:
    enum Place
    {
        Title,
        Heading,
        Text,
        Nowhere
    }; ///< of a word in a page, best first
    struct Page
    {
        HelpTopic Topic;
        std::array<QStringList, Nowhere> Words; ///< search words of each Place
    };
    void AddPage(const QString &folder, const QString &file);
    static int NearestPlace(const Page &page, const QString &word);

    QList<HelpTopic> m_contents;
    QList<Page> m_pages;
};
