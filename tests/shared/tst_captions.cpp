// Every designed caption of every window fits the box it was designed for, in the windows'
// font as this desktop serves it, at 96 dpi: labels, check boxes, buttons and frames.

#include "accessories/about.h"
#include "accessories/calculator.h"
#include "accessories/doodle.h"
#include "accessories/secret_place.h"
#include "browser/main_window.h"
#include "companions/browser_status.h"
#include "companions/home_page.h"
#include "shared/color.h"
#include "shared/statf.h"
#include "startup/intro.h"
#include "startup/theme_selector.h"
#include "platform/form.h"
#include "platform/runtime.h"
#include "support/test_main.h"
#include "support/test_runtime.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QStyle>
#include <QStyleOptionButton>

#include <functional>

using namespace platform;

Q_DECLARE_METATYPE(std::function<platform::Form&()>)

namespace {

const QString kThemes = QStringLiteral(GLIDEPATH_SOURCE_DIR "/themes");

// The room a caption needs in its control, and the room the control has.
struct Fit {
    QString text;
    int needed;
    int room;
};

QList<Fit> captionsOf(QWidget& window)
{
    QList<Fit> fits;
    for (QWidget* w : window.findChildren<QWidget*>()) {
        if (!w->isVisibleTo(&window))
            continue;
        const QFontMetrics metrics(w->font());
        if (auto* label = qobject_cast<QLabel*>(w); label && !label->text().isEmpty() && !label->text().contains(QLatin1Char('<'))) {
            const QString text = label->text();
            if (label->wordWrap())
                fits.append({text, label->heightForWidth(label->width()), label->height()});
            else
                fits.append({text, metrics.horizontalAdvance(text), label->width()});
        } else if (auto* box = qobject_cast<QCheckBox*>(w); box && !box->text().isEmpty()) {
            // The text stands right of the box's indicator.
            QStyleOptionButton option;
            option.initFrom(box);
            option.text = box->text();
            const QRect text = box->style()->subElementRect(QStyle::SE_CheckBoxContents, &option, box);
            fits.append({box->text(), metrics.horizontalAdvance(box->text()), text.width()});
        } else if (auto* button = qobject_cast<QAbstractButton*>(w); button && !button->text().isEmpty()) {
            // The caption and the button's own bevel on each side.
            const int bevel = 2 * button->style()->pixelMetric(QStyle::PM_ButtonMargin, nullptr, button);
            fits.append({button->text(), metrics.horizontalAdvance(button->text()) + bevel, button->width()});
        } else if (auto* frame = qobject_cast<QGroupBox*>(w); frame && !frame->title().isEmpty()) {
            fits.append({frame->title(), metrics.horizontalAdvance(frame->title()) + 16, frame->width()});
        }
    }
    return fits;
}

} // namespace

class TestCaptions : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void everyCaptionFits_data();
    void everyCaptionFits();
};

void TestCaptions::everyCaptionFits_data()
{
    QTest::addColumn<std::function<Form&()>>("open");
    QTest::newRow("IntroFRM") << std::function<Form&()>([]() -> Form& { return form<IntroFRM>(); });
    QTest::newRow("ThemeSelector") << std::function<Form&()>([]() -> Form& { return form<ThemeSelector>(); });
    QTest::newRow("StatF") << std::function<Form&()>([]() -> Form& {
        form<StatF>().Info.setCaption(QStringLiteral("Loading BackGround (Main) Image..."));
        return form<StatF>();
    });
    QTest::newRow("MainFRM") << std::function<Form&()>([]() -> Form& { return form<MainFRM>(); });
    QTest::newRow("HomePageFRM") << std::function<Form&()>([]() -> Form& { return form<HomePageFRM>(); });
    QTest::newRow("BrowserStatusFRM") << std::function<Form&()>([]() -> Form& {
        form<MainFRM>(); // the window it reports on
        return form<BrowserStatusFRM>();
    });
    QTest::newRow("CalculatorFRM") << std::function<Form&()>([]() -> Form& {
        form<ThemeSelector>().TPath.setText(kThemes + "/Default");
        return form<CalculatorFRM>();
    });
    QTest::newRow("DoodleFRM") << std::function<Form&()>([]() -> Form& {
        form<DoodleFRM>().TFrame.setTop(240); // the options panel in view
        return form<DoodleFRM>();
    });
    QTest::newRow("AboutFRM") << std::function<Form&()>([]() -> Form& {
        form<ThemeSelector>().TPath.setText(kThemes + "/Default");
        return form<AboutFRM>();
    });
    QTest::newRow("SecretPlace") << std::function<Form&()>([]() -> Form& { return form<SecretPlace>(); });
}

void TestCaptions::everyCaptionFits()
{
    QFETCH(std::function<Form&()>, open);
    TestRuntime t;
    t.write("ThemeDir.INI", "[Theme Directory]\r\nDIR=" + (kThemes + "/Default").toLocal8Bit() + "\r\n");
    t.write("HomePage.TXT", "about:blank\r\n");
    Form* window = nullptr;
    runHandler([&] { window = &open(); });
    QVERIFY(window);
    window->Show();
    QVERIFY(QTest::qWaitForWindowExposed(window->widget()));
    const QList<Fit> fits = captionsOf(*window->widget());
    QVERIFY(!fits.isEmpty());
    for (const Fit& fit : fits)
        QVERIFY2(fit.needed <= fit.room, qPrintable(QStringLiteral("\"%1\" needs %2 px, has %3").arg(fit.text).arg(fit.needed).arg(fit.room)));
}

GLIDEPATH_WEB_TEST_MAIN(TestCaptions)
#include "tst_captions.moc"
