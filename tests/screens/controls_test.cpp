// The date picker as the user types into it: a whole date typed over the
// selection, in the forms office staff use, and dates that do not exist.
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTest>

#include "screens/controls.h"

namespace lorvane::screens {
namespace {

using namespace Qt::StringLiterals;

struct TypedRow {
    const char* name;
    const char* typed;
    Qt::Key ending;     // the key that ends the typing
    const char* shown;  // what the picker shows after it
    bool refused;
};

class DateTyping : public ::testing::TestWithParam<TypedRow> {};

// The picker starts on 10/02/2026; the user selects all and types.
TEST_P(DateTyping, GivesTheTypedDateOrKeepsItsOwnVisibly) {
    const TypedRow& row = GetParam();
    QWidget window;
    auto* picker = new DatePicker(&window);
    auto* other = new QLineEdit(&window);
    other->move(0, 40);
    picker->setDate(QDate(2026, 2, 10));
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    picker->setFocus();
    QTest::keyClick(picker, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(picker, QString::fromUtf8(row.typed));
    if (row.ending == Qt::Key_Tab) {
        other->setFocus();
        ASSERT_TRUE(other->hasFocus());
    } else {
        QTest::keyClick(picker, row.ending);
    }
    EXPECT_EQ(picker->date().toString(u"dd/MM/yyyy"_s), QString::fromUtf8(row.shown));
    EXPECT_EQ(picker->text(), QString::fromUtf8(row.shown));
    EXPECT_EQ(picker->showsInvalidDate(), row.refused);
    EXPECT_EQ(picker->toolTip().isEmpty(), !row.refused);
}

INSTANTIATE_TEST_SUITE_P(
    Controls, DateTyping,
    ::testing::Values(TypedRow{"WithSlashes", "01/01/2025", Qt::Key_Return, "01/01/2025", false},
                      TypedRow{"ShortForm", "1/1/25", Qt::Key_Return, "01/01/2025", false},
                      TypedRow{"EightDigits", "01012025", Qt::Key_Return, "01/01/2025", false},
                      TypedRow{"SixDigits", "150330", Qt::Key_Return, "15/03/1930", false},
                      TypedRow{"Dashes", "5-6-2024", Qt::Key_Return, "05/06/2024", false},
                      TypedRow{"TakenWhenTheFocusLeaves", "01012025", Qt::Key_Tab, "01/01/2025",
                               false},
                      TypedRow{"FebruaryThe31st", "31/02/2026", Qt::Key_Return, "10/02/2026", true},
                      TypedRow{"NoThirteenthMonth", "1/13/25", Qt::Key_Tab, "10/02/2026", true},
                      TypedRow{"NotADate", "0101", Qt::Key_Return, "10/02/2026", true},
                      TypedRow{"EscapeGivesUp", "01012025", Qt::Key_Escape, "10/02/2026", false}),
    [](const ::testing::TestParamInfo<TypedRow>& info) { return std::string(info.param.name); });

// Typing into the day alone, with the month on February: 31 cannot be
// entered, and the picker shows that it refused it until the next edit.
TEST(DatePicker, RefusesADayTheMonthDoesNotHaveVisibly) {
    DatePicker picker;
    picker.setDate(QDate(2026, 2, 10));
    picker.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&picker));
    picker.setFocus();
    picker.setCurrentSection(QDateTimeEdit::DaySection);
    QTest::keyClicks(&picker, u"31"_s);
    QTest::keyClick(&picker, Qt::Key_Return);
    EXPECT_EQ(picker.date().month(), 2);
    EXPECT_TRUE(picker.showsInvalidDate());
    QTest::keyClick(&picker, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&picker, u"12022026"_s);
    QTest::keyClick(&picker, Qt::Key_Return);
    EXPECT_EQ(picker.date(), QDate(2026, 2, 12));
    EXPECT_FALSE(picker.showsInvalidDate());
}

}  // namespace
}  // namespace lorvane::screens
