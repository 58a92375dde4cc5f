#include "shell/frm_user_setup.h"
#include "shell/setup_rows.h"

#include <QGridLayout>
#include <QTabWidget>

using namespace SetupRows;

namespace
{

/// The words of a style's page. A row has the words before the share limit, if it has one, and
/// those between it and the amount.
struct StyleWords
{
    struct RowWords
    {
        const char *before; ///< nullptr: no share limit
        const char *amount;
    };
    RowWords cost;
    RowWords perShare;
    const char *below; ///< nullptr: nothing
    const char *example;
};

const StyleWords Words5[] = {
    {{nullptr, "Any number of shares (flat charge regardless)"},
     {nullptr, "Plus cost each share (0.00 if no surcharge)"},
     nullptr,
     "Example: 1000 shares at $14.95, plus 0.02 each share.  Total commission is $34.95. "
     "Enter 0s and use this style if you pay no commissions."},
    {{"First", "shares         (flat charge regardless)"},
     {"Greater than", "retroactive to first share."},
     nullptr,
     "Example: 1st 1000 shares at $14.95, plus 0.01 each additional.  Total commission on 3000 "
     "shares is $44.95."},
    {{"First", "shares         (flat charge regardless)"},
     {"Greater than", "Plus per share cost of:"},
     nullptr,
     "Example: 1st 1000 shares at $14.95, plus 0.01 each additional over 1000.  Total commission "
     "on 3000 shares is $34.95."},
    {{"First", "shares,              Flat rate of:"},
     {"Greater than", "shares,           Per share cost of:"},
     "(Which ever is greater)",
     "Example: 1st 1000 shares at $14.95, over 1000 at .01. Total commission on 900 shares is "
     "$14.95.   2000 shares, total commission is $20.00.  1300 shares is $14.95."},
    {{nullptr, "Percent of purchase total:"},
     {nullptr, "Plus flat rate of:"},
     nullptr,
     "Example: $3500 total purchase at .002% plus flat rate of $5 is $12.00."}};

const char *const AmountTip = "Used once the style is checked and applied";

FieldEdit *StyleAmount(QWidget *page, const Formats &formats, int index, const char *figure,
                       const char *meaning)
{
    const QByteArray name =
        QStringLiteral("txtStyle%1%2").arg(index + 1).arg(QLatin1String(figure)).toLatin1();
    const QByteArray accessible =
        QStringLiteral("Style %1: %2").arg(index + 1).arg(QLatin1String(meaning)).toLatin1();
    return Amount(page, formats, name.constData(), accessible.constData(), AmountTip);
}

} // namespace

QWidget *frmUserSetup::BuildCommissionPage()
{
    auto *page = new QWidget(SSTab);
    SSTabCommission = Named(new QTabWidget(page), "SSTabCommission", "Commission styles");
    for (int index = 0; index < int(m_styles.size()); ++index) {
        auto *style = new QWidget(SSTabCommission);
        auto *rows = new QVBoxLayout(style);
        BuildStyleRows(index, style, rows);
        rows->addStretch();
        SSTabCommission->addTab(style, QStringLiteral("Style &%1").arg(index + 1));
    }
    auto *all = new QVBoxLayout(page);
    all->addWidget(SSTabCommission);
    return page;
}

void frmUserSetup::BuildStyleRows(int index, QWidget *page, QBoxLayout *rows)
{
    const StyleWords &words = Words5[index];
    StylePage &style = m_styles[size_t(index)];
    const Formats &formats = m_program.services.formats;
    const bool isFactor = index == int(m_styles.size()) - 1;

    const QByteArray check = "chkStyle" + QByteArray::number(index + 1);
    style.chkStyle = Check(page, check.constData(), "Use this style for commissions", "");
    style.chkStyle->setAccessibleName(
        QStringLiteral("Use style %1 for commissions").arg(index + 1));
    rows->addWidget(style.chkStyle);

    auto *fields = new QGridLayout;
    const auto add = [&](const StyleWords::RowWords &row, FieldEdit *shares, FieldEdit *amount) {
        const int at = fields->rowCount();
        if (shares) {
            fields->addWidget(Words(page, row.before), at, 0);
            fields->addWidget(shares, at, 1);
        }
        fields->addWidget(Words(page, row.amount), at, shares ? 2 : 0, 1, shares ? 1 : 3);
        fields->addWidget(amount, at, 3);
    };
    if (words.cost.before)
        style.txtShares = StyleAmount(page, formats, index, "Shares", "first shares");
    style.txtCost =
        StyleAmount(page, formats, index, "Cost", isFactor ? "percent of purchase" : "cost");
    add(words.cost, style.txtShares, style.txtCost);
    if (words.perShare.before)
        style.txtShares2 = StyleAmount(page, formats, index, "Shares2", "greater than shares");
    style.txtPerShare = StyleAmount(page, formats, index, isFactor ? "FlatCost" : "PerShare",
                                    isFactor ? "flat rate" : "cost a share");
    add(words.perShare, style.txtShares2, style.txtPerShare);
    fields->setColumnStretch(4, 1);
    rows->addLayout(fields);
    if (words.below)
        rows->addWidget(Words(page, words.below));
    rows->addSpacing(fontMetrics().height());
    rows->addWidget(Note(page, words.example));

    OnClick(style.chkStyle, [this, index] { chkStyle_Click(index); });
}

void frmUserSetup::chkStyle_Click(int index)
{
    m_program.account.CommissionStyle = StyleName(index);
    ShowStyleInForce();
}

/// One style is checked, or none before the first was chosen.
void frmUserSetup::ShowStyleInForce()
{
    const std::optional<int> inForce = StyleIndex(m_program.account.CommissionStyle);
    for (int index = 0; index < int(m_styles.size()); ++index) {
        QCheckBox *check = m_styles[size_t(index)].chkStyle;
        check->setChecked(inForce == index);
        check->setToolTip(inForce == index
                              ? QStringLiteral("This commission style is in effect.")
                              : QStringLiteral("Check here to select this style option."));
    }
}
