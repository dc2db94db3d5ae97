// SendKeys: keystrokes in the classic notation, delivered to the window that has the keyboard
// as if typed there, once the handler that sent them has returned.

#include "platform/controls.h"
#include "platform/form.h"
#include "platform/runtime.h"
#include "platform/send_keys.h"
#include "support/input.h"
#include "support/test_main.h"
#include "support/test_runtime.h"

using namespace platform;

namespace {

class Typist : public Form {
public:
    Typist() : Form("Typist", 4000, 1500)
    {
        Box.onKeyPress([this](std::int16_t& key) { codes << key; });
        Other.onKeyPress([this](std::int16_t& key) { otherCodes << key; });
    }
    TextBox Box{*this, "Box", {120, 120, 3600, 285}};
    TextBox Other{*this, "Other", {120, 600, 3600, 285}};
    QList<int> codes, otherCodes;
};

} // namespace

class TestSendKeys : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void keys_data();
    void keys();
    void afterTheHandler();
};

void TestSendKeys::keys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("text");      // what the box holds after
    QTest::addColumn<QList<int>>("codes"); // the KeyPress codes the box saw
    QTest::newRow("letters") << "abc" << "abc" << QList<int>{'a', 'b', 'c'};
    QTest::newRow("shift: capitals") << "+a+b" << "AB" << QList<int>{'A', 'B'};
    QTest::newRow("enter, by name and as ~") << "a{ENTER}b~" << "ab" << QList<int>{'a', 13, 'b', 13};
    QTest::newRow("backspace") << "abc{BACKSPACE}" << "ab" << QList<int>{'a', 'b', 'c', 8};
    // Ctrl+A selects all in a text box: what is typed next replaces it.
    QTest::newRow("ctrl: a shortcut, not a letter") << "abc^ax" << "x" << QList<int>{'a', 'b', 'c', 1, 'x'};
}

void TestSendKeys::keys()
{
    QFETCH(QString, keys);
    QFETCH(QString, text);
    QFETCH(QList<int>, codes);
    TestRuntime t;
    Typist& window = form<Typist>();
    QVERIFY(input::focus(window.Box));
    SendKeys(keys);
    QTRY_COMPARE(window.Box.Text(), text);
    QTRY_COMPARE(window.codes, codes);
    QCOMPARE(window.otherCodes, QList<int>{});
}

void TestSendKeys::afterTheHandler()
{
    // Keys sent from a handler that moves the keyboard first arrive where the keyboard went,
    // after the handler: the way the find command reaches the browser pane.
    TestRuntime t;
    Typist& window = form<Typist>();
    QVERIFY(input::focus(window.Box));
    runHandler([&] {
        window.Other.SetFocus();
        SendKeys(QStringLiteral("hi"));
        QCOMPARE(window.Other.Text(), QString()); // not yet
    });
    QTRY_COMPARE(window.Other.Text(), QStringLiteral("hi"));
    QCOMPARE(window.Box.Text(), QString());
    // An unknown key name is an invalid procedure call.
    runHandler([] { SendKeys(QStringLiteral("{NOSUCHKEY}")); });
    QCOMPARE(t.untrappedErrors, QList<int>{ErrInvalidProcedureCall});
}

GLIDEPATH_TEST_MAIN(TestSendKeys)
#include "tst_send_keys.moc"
