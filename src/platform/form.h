#pragma once
// A window of the classic form model. Each window class has one instance, made by the runtime
// on first touch (form<T>()), which then runs Form_Load; Show, Hide and Unload are separate.
// Positions and sizes are in twips; Width and Height are the outer size, frame included
// (the frame is what the window manager reports, nothing where there is none).
//
// A window holds its Qt widget rather than being one, so that a window's code reaches only the
// classic API; the platform and the tests reach the widget through widget().
//
// A window is also a drawing surface (its Canvas): a background colour, a scale and lines and
// circles drawn in that scale.

#include "canvas.h"
#include "colors.h"
#include "twips.h"

#include <QImage>
#include <QObject>
#include <QString>

#include <functional>

class QMenuBar;
class QMouseEvent;
class QPaintEvent;
class QTimerEvent;
class QWidget;

namespace platform {

class Forms;
class GraphicsLayer;

// Anything controls can be placed in: a window, a frame, a picture box.
class Container {
public:
    virtual ~Container() = default;
    virtual QWidget* containerWidget() = 0;
    // Where the client area begins inside the container's widget, in pixels (below a menu bar).
    virtual QPoint clientOrigin() const { return {}; }
};

enum WindowStates : int { vbNormal = 0, vbMinimized = 1, vbMaximized = 2 };

// The BorderStyle property: no title bar and no frame, or a frame the user cannot resize.
enum BorderStyle : int { vbBSNone = 0, vbFixedSingle = 1 };

class FormWidget;

class Form : public QObject, public Container {
    Q_OBJECT
public:
    enum class Menu { None, Bar };
    // The designed client area, in twips; a window with a menu bar is that much taller.
    Form(const char* name, int clientWidth, int clientHeight, Menu menu = Menu::None);
    ~Form() override;

    // The window's Qt widget: the one way to it, for the platform and the tests.
    QWidget* widget() const;
    // The window whose widget this is (null for any other widget).
    static Form* of(const QWidget* widget);

    QWidget* containerWidget() override { return widget(); }
    QPoint clientOrigin() const override;
    QMenuBar* MenuBar() const { return m_menuBar; }

    // The first showing places the window: where the program put it, or else centred; in both
    // cases whole on the screen. A menu bar is added above the designed client area.
    void Show();
    void Hide();
    bool Visible() const;

    QString Caption() const { return m_caption; }
    void setCaption(const QString& caption);
    // A fixed border keeps the size the window has when it is set.
    void setBorderStyle(BorderStyle style);
    // The font of the window itself and of what it draws without a font of its own (its menus).
    void setFont(const QString& name, double points, bool bold = false);
    // Places the window in the middle of the screen at its present size.
    void CentreOnScreen();

    int Left() const;
    void setLeft(int twips);
    int Top() const;
    void setTop(int twips);
    int Width() const;
    void setWidth(int twips);
    int Height() const;
    void setHeight(int twips);
    int WindowState() const;
    void setWindowState(int state);
    void setTopMost();

    // Drawing surface.
    OleColor BackColor() const { return m_canvas.BackColor(); }
    void setBackColor(OleColor color) { m_canvas.setBackColor(color); } // also clears what was drawn
    void Cls() { m_canvas.Cls(); }
    void ScaleTwips() { m_canvas.ScaleTwips(); }
    void ScalePixels() { m_canvas.ScalePixels(); }
    void Scale(double left, double top, double right, double bottom) { m_canvas.Scale(left, top, right, bottom); }
    double ScaleWidth() const { return m_canvas.ScaleWidth(); }
    double ScaleHeight() const { return m_canvas.ScaleHeight(); }
    void Line(double x1, double y1, double x2, double y2, OleColor color) { m_canvas.Line(x1, y1, x2, y2, color); }
    void Circle(double x, double y, double radius, OleColor color) { m_canvas.Circle(x, y, radius, color); }
    // What was drawn (null until something is), with every line and circle so far on it.
    const QImage& surface() { return m_canvas.surface(); }
    // A point of the window's scale in pixels of its client area, and back.
    QPointF toSurface(double x, double y) const { return m_canvas.toSurface(x, y); }
    QPointF fromSurface(QPointF pixels) const { return m_canvas.fromSurface(pixels); }

    // The layer the window's windowless controls (lines, shapes) are drawn on; made with the first.
    GraphicsLayer& graphicsLayer();

    // Shown and drawn on the screen at least once since.
    bool painted() const;

Q_SIGNALS:
    // The window's first paint after being shown.
    void firstPainted();
    // Every caption written, also when it equals the one shown.
    void captionWritten(const QString& caption);
    // Every write of Width or Height, with the value written (seen by tests of the effects).
    void sizeWritten(int widthTwips, int heightTwips);

protected:
    // The window's handlers; each says in its window which errors it ignores.
    virtual void Form_Load() {}
    virtual void Form_Unload(int& cancel) { (void)cancel; }
    virtual void Form_Resize() {}
    virtual void Form_Click() {}
    virtual void Form_DblClick() {}
    // button: the button pressed or released (1 left, 2 right, 4 middle); on a move, the
    // buttons held. x and y are in the window's scale.
    virtual void Form_MouseDown(int button, int shift, double x, double y) { (void)button, (void)shift, (void)x, (void)y; }
    virtual void Form_MouseMove(int button, int shift, double x, double y) { (void)button, (void)shift, (void)x, (void)y; }
    virtual void Form_MouseUp(int button, int shift, double x, double y) { (void)button, (void)shift, (void)x, (void)y; }
    virtual void Form_Terminate() {}

private:
    friend class Forms;
    friend class FormWidget;
    void runLoad() { Form_Load(); }
    void runUnload(int& cancel) { Form_Unload(cancel); }
    void runTerminate() { Form_Terminate(); }

    // What the widget reports, in the window's terms.
    void placeOnFirstShow();
    void shown();
    void paint(QPaintEvent* event);
    void resized();
    void moved();
    void stateChanged();
    void closeAsked();
    void mousePressed(QMouseEvent* event);
    void mouseMoved(QMouseEvent* event);
    void mouseReleased(QMouseEvent* event);
    void mouseDoubleClicked();

    // The widget's size in pixels.
    QSize size() const;
    int width() const;
    int height() const;

    QPointF clientPoint(const QMouseEvent& mouse) const; // in the window's scale
    int menuBarHeight() const;
    // Reads the frame the window manager gives the window; true when it changed.
    bool noteFrame();
    // The same, with the layout run again when it changed.
    void followFrame();

    FormWidget* m_widget;
    QMenuBar* m_menuBar = nullptr;
    int m_menuHeight = 0; // pixels
    QString m_caption; // as written: the window system may not keep every character
    TwipsMemo m_left, m_top, m_width, m_height;
    QSize m_frame{0, 0};
    QRect m_normalGeometry; // before maximising, where no window manager keeps it
    int m_clientHeight; // the designed client area's height, in pixels
    bool m_placed = false;          // shown at least once
    bool m_positionWritten = false; // Left or Top set by the program
    bool m_heightWritten = false;
    Canvas m_canvas;
    GraphicsLayer* m_graphics = nullptr;
    bool m_pressed = false;
    bool m_paintedSinceShow = false;
};

} // namespace platform
