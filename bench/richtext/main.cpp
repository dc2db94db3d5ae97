// The rich text box with a 1 MB document, on a real window of a virtual screen: the time to
// set the whole text, and the time from a typed key to the key on the screen. Twice: a page of
// short lines, and the same page as one line (as the HTML editor's Open reads a file, its
// lines joined).

#include "platform/form.h"
#include "platform/rich_text_box.h"
#include "platform/runtime.h"
#include "../shown.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace platform;

namespace {

class Editor : public Form {
public:
    Editor() : Form("Editor", 8175, 5295) {}
    RichTextBox RichText{*this, "RichText", {120, 480, 7935, 4695}};
};

// About a megabyte of HTML source in lines of some 60 characters.
QString document()
{
    QString text;
    for (int i = 0; text.size() < (1 << 20); ++i)
        text += QStringLiteral("<p class=\"line\">Line %1 of a long page, with some text.</p>\r\n").arg(i);
    return text;
}

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

struct Figures {
    double set, key;
};

Figures measure(Editor& editor, const QString& text)
{
    std::vector<double> sets, keys;
    QElapsedTimer clock;
    for (int run = 0; run < 5; ++run) {
        clock.start();
        editor.RichText.setText(text);
        sets.push_back(clock.nsecsElapsed() / 1e6);
        QCoreApplication::processEvents();
    }
    editor.RichText.widget()->setFocus();
    waitUntilActive(*editor.widget());
    QWidget* area = editor.RichText.widget();
    for (int run = 0; run < 20; ++run) {
        clock.start();
        QTest::keyClick(editor.widget()->windowHandle(), 'x'); // through the window, as a keyboard types
        area->repaint();                             // and on the screen
        keys.push_back(clock.nsecsElapsed() / 1e6);
    }
    return {median(sets), median(keys)};
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    Runtime runtime;
    Editor editor;
    editor.Show();
    waitUntilShown(*editor.widget());
    const QString lines = document();
    const Figures many = measure(editor, lines);
    const Figures one = measure(editor, QString(lines).remove(QStringLiteral("\r\n")));
    std::printf("rich text box: setting a 1 MB text          %8.1f ms   (goal 50)\n", many.set);
    std::printf("rich text box: a typed key on the screen    %8.2f ms   (goal 16)\n", many.key);
    std::printf("rich text box, one line: setting 1 MB       %8.1f ms   (goal 50)\n", one.set);
    std::printf("rich text box, one line: a typed key        %8.2f ms   (goal 16)\n", one.key);
    return 0;
}
