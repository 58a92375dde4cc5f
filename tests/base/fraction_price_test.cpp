#include "base/fraction_price.h"

#include <gtest/gtest.h>

namespace
{

const Formats English{QLocale(QLocale::English, QLocale::UnitedStates)};
const Formats German{QLocale(QLocale::German, QLocale::Germany)};

struct PriceCase
{
    const char *Text;
    const char *Price; ///< nullptr: no price
    int Error = 0;
};

void PrintTo(const PriceCase &row, std::ostream *out)
{
    *out << '"' << row.Text << '"';
}

class FractionPrice : public testing::TestWithParam<PriceCase>
{};

TEST_P(FractionPrice, IsReadAsWritten)
{
    const PriceCase &row = GetParam();
    int error = 0;
    Currency price;
    try {
        price = ParseFractionPrice(QString::fromUtf8(row.Text), English);
    } catch (const RuntimeError &thrown) {
        error = thrown.Number();
    }
    EXPECT_EQ(error, row.Error);
    if (row.Price) {
        EXPECT_EQ(price.Units(), Currency(row.Price).Units());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Prices, FractionPrice,
    testing::Values(PriceCase{"12 3/8", "12.375"}, PriceCase{"3/8", "0.375"},
                    PriceCase{"12 1/2", "12.5"}, PriceCase{"12  3 / 8 ", "12.375"},
                    PriceCase{"1/3", "0.3333"}, PriceCase{"100 2/3", "100.6667"},
                    PriceCase{"8/8", "1"}, PriceCase{"12.5", "12.5"}, PriceCase{"0", "0"},
                    PriceCase{"", "0"}, PriceCase{"0.00001", "0"}, PriceCase{"0/8", "0"},
                    // 32-bit floats near it lie 0.00012 apart: 1234.56005859
                    PriceCase{"1234.56", "1234.5601"}, PriceCase{"1,234.56", "1234.5601"},
                    PriceCase{"1,234.50", "1234.5"},
                    // ... and 0.0625 apart here
                    PriceCase{"999999.99", "1000000"}));

INSTANTIATE_TEST_SUITE_P(
    NoPrices, FractionPrice,
    testing::Values(PriceCase{"abc", nullptr, 13}, PriceCase{"12 3/0", nullptr, 11},
                    PriceCase{"/8", nullptr, 13}, PriceCase{"3/", nullptr, 13},
                    PriceCase{"1/2/3", nullptr, 13}, PriceCase{"1 2 3/4", nullptr, 13},
                    PriceCase{"12 3", nullptr, 13}, PriceCase{"/", nullptr, 13},
                    PriceCase{" ", nullptr, 13}, PriceCase{"1.2.3", nullptr, 13},
                    PriceCase{",", nullptr, 13}, PriceCase{"99999999999999999999", nullptr, 6},
                    PriceCase{"1e99", nullptr, 6}));

} // namespace

TEST(ParseFractionPrice, FollowsTheLocaleOfTheUser)
{
    EXPECT_EQ(ParseFractionPrice(QStringLiteral("1.234,5"), German).Units(),
              Currency("1234.5").Units());
    EXPECT_EQ(ParseFractionPrice(QStringLiteral("12 3/8"), German).Units(),
              Currency("12.375").Units());
}
