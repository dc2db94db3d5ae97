#include "calculator.h"

#include "shared/settings.h"
#include "shared/window_look.h"
#include "platform/picture.h"
#include "platform/runtime.h"
#include "platform/wiring.h"

using namespace platform;

namespace {

constexpr int kClientWidth = 3735;
constexpr int kClientHeight = 3615;
constexpr int kKey = 495; // every key is 495 by 495 unless its row says otherwise
constexpr double kKeyPoints = 12;
constexpr double kSmallKeyPoints = 8.25;
constexpr double kSqrtPoints = 6.75;

struct Key {
    int index;
    const char* caption;
    int left, top, width;
};

// The key table, by array: index, caption, place and width.
constexpr Key kCancel[] = {{0, "Back", 720, 600, 975}, {2, "CE", 1800, 600, 975}, {1, "C", 2880, 600, 735}};
constexpr Key kMemory[] = {{0, "MC", 120, 1200, kKey}, {3, "MR", 120, 1800, kKey},
                           {2, "MS", 120, 2400, kKey}, {1, "M+", 120, 3000, kKey}};
constexpr Key kDigits[] = {{7, "7", 720, 1200, kKey}, {8, "8", 1320, 1200, kKey}, {9, "9", 1920, 1200, kKey},
                           {4, "4", 720, 1800, kKey}, {5, "5", 1320, 1800, kKey}, {6, "6", 1920, 1800, kKey},
                           {1, "1", 720, 2400, kKey}, {2, "2", 1320, 2400, kKey}, {3, "3", 1920, 2400, kKey},
                           {0, "0", 720, 3000, kKey}};
constexpr Key kFunctions[] = {{0, "+/-", 1920, 3000, kKey}, {3, "Sqrt", 3120, 1200, kKey},
                              {2, "%", 3120, 1800, kKey},   {1, "1/X", 3120, 2400, kKey}};
constexpr Key kOperatorKeys[] = {{0, "/", 2520, 1200, kKey}, {3, "*", 2520, 1800, kKey},
                                 {2, "-", 2520, 2400, kKey}, {1, "+", 2520, 3000, kKey}};

template <std::size_t N>
void addKeys(Form& window, ControlArray<CommandButton>& keys, const char* name, const Key (&table)[N])
{
    for (const Key& k : table)
        keys.add(window, name, k.index, TwipsRect{k.left, k.top, k.width, kKey}, QString::fromLatin1(k.caption));
}

const Wiring<CalculatorFRM> kWiring[] = {
    {OnClick, &CalculatorFRM::numero, &CalculatorFRM::numero_Click},
    {OnClick, &CalculatorFRM::cmdDot, &CalculatorFRM::cmdDot_Click},
    {OnClick, &CalculatorFRM::operator_, &CalculatorFRM::operator_Click},
    {OnClick, &CalculatorFRM::cmdEqual, &CalculatorFRM::cmdEqual_Click},
    {OnClick, &CalculatorFRM::cmdCancel, &CalculatorFRM::cmdCancel_Click},
    {OnClick, &CalculatorFRM::cmdFunction, &CalculatorFRM::cmdFunction_Click},
    {OnClick, &CalculatorFRM::cmdMemory, &CalculatorFRM::cmdMemory_Click},
    {OnKeyPress, &CalculatorFRM::cmdEqual, &CalculatorFRM::cmdEqual_KeyPress},
};

// Whatever a handler did, the window shows the engine's display and memory mark afterwards,
// also when the handler ends in an error the window does not trap.
class Shown {
public:
    explicit Shown(std::function<void()> show) : m_show(std::move(show)) {}
    ~Shown() { m_show(); }

private:
    std::function<void()> m_show;
};

} // namespace

CalculatorFRM::CalculatorFRM() : Form("CalculatorFRM", kClientWidth, kClientHeight)
{
    setCaption(QStringLiteral("Calculator"));
    addKeys(*this, cmdCancel, "cmdCancel", kCancel);
    addKeys(*this, cmdMemory, "cmdMemory", kMemory);
    addKeys(*this, numero, "numero", kDigits);
    addKeys(*this, cmdFunction, "cmdFunction", kFunctions);
    addKeys(*this, operator_, "operator", kOperatorKeys);

    UseWindowFont({&txtDisplay, &cmdDot, &cmdEqual}, kKeyPoints);
    UseWindowFont({&lblMem}, kKeyPoints, true);
    for (CommandButton& key : cmdCancel)
        UseWindowFont({&key}, kKeyPoints);
    for (CommandButton& key : cmdMemory)
        UseWindowFont({&key}, kKeyPoints, true);
    for (CommandButton& key : numero)
        UseWindowFont({&key}, kKeyPoints);
    for (CommandButton& key : operator_)
        UseWindowFont({&key}, kKeyPoints);
    UseWindowFont({&cmdFunction(0), &cmdFunction(1)}, kSmallKeyPoints);
    UseWindowFont({&cmdFunction(2)}, kKeyPoints);
    UseWindowFont({&cmdFunction(3)}, kSqrtPoints);
    for (CommandButton& key : cmdFunction)
        key.setCaptionFillsFace(); // the captions take the whole face, as they were designed to
    lblMem.setAlignment(vbCenter);
    lblMem.setAccessibleName(QStringLiteral("Memory"));

    // The display only shows: every designed input goes through the keys and the keyboard
    // handler on "=", so a click into it must not take the keyboard away from "=".
    txtDisplay.setLocked(true);
    txtDisplay.setTabStop(false);
    txtDisplay.setAlignment(vbRightJustify);

    // "=" is first in the tab order and has the focus when the window opens.
    std::vector<Control*> tabOrder{&cmdEqual};
    for (ControlArray<CommandButton>* keys : {&cmdCancel, &cmdMemory, &numero})
        for (CommandButton& key : *keys)
            tabOrder.push_back(&key);
    tabOrder.push_back(&cmdDot);
    for (ControlArray<CommandButton>* keys : {&cmdFunction, &operator_})
        for (CommandButton& key : *keys)
            tabOrder.push_back(&key);
    SetTabOrder(tabOrder);
    cmdEqual.SetFocus();

    // No layout handler: the window keeps its designed size.
    setBorderStyle(vbFixedSingle);
    wire(*this, kWiring);
}

void CalculatorFRM::refreshDisplay()
{
    txtDisplay.setText(state.display);
    lblMem.setCaption(state.memoryMark);
}

void CalculatorFRM::Form_Load()
{
    // Errors: none trapped. No unload handler: the window plays no closing sound.
    ImageOne.setPicture(LoadPicture(ThemeDir() + "/Main.BMP"));
    PlayOpenSound();
}

void CalculatorFRM::numero_Click(int Index)
{
    // Errors: none trapped. The only key that clicks.
    Shown shown([this] { refreshDisplay(); });
    PlayClickSound();
    state.digit(Index);
    cmdEqual.SetFocus();
}

void CalculatorFRM::cmdDot_Click()
{
    // Errors: none trapped.
    Shown shown([this] { refreshDisplay(); });
    if (state.dot())
        cmdEqual.SetFocus();
}

void CalculatorFRM::operator_Click(int Index)
{
    // Errors: none trapped (a display beyond the double range is an Overflow).
    Shown shown([this] { refreshDisplay(); });
    state.operatorKey(Index);
    cmdEqual.SetFocus();
}

void CalculatorFRM::cmdEqual_Click()
{
    // Errors: trapped: an arithmetic fault shows "Error!!!" and the fault in a message box.
    Shown shown([this] { refreshDisplay(); });
    state.equal([this](const QString& description) {
        refreshDisplay();
        MsgBox(description, vbCritical, QStringLiteral("Glide Path Calculator"));
    });
}

void CalculatorFRM::cmdCancel_Click(int Index)
{
    // Errors: none trapped; "Back" ignores its own failure on an empty display.
    Shown shown([this] { refreshDisplay(); });
    if (state.cancel(Index))
        cmdEqual.SetFocus();
}

void CalculatorFRM::cmdFunction_Click(int Index)
{
    // Errors: none trapped (the square root of a negative value ends the program).
    Shown shown([this] { refreshDisplay(); });
    state.function(Index);
}

void CalculatorFRM::cmdMemory_Click(int Index)
{
    // Errors: none trapped (MS on a display that is no number ends the program).
    Shown shown([this] { refreshDisplay(); });
    state.memory(Index);
}

void CalculatorFRM::cmdEqual_KeyPress(std::int16_t& keyAscii)
{
    // Errors: none trapped. Each mapped key is focused and its click handler run.
    Shown shown([this] { refreshDisplay(); });
    CalculatorEngine::Keys keys;
    keys.operatorKey = [this](int i) {
        operator_(i).SetFocus();
        operator_Click(i);
    };
    keys.dotKey = [this] {
        cmdDot.SetFocus();
        cmdDot_Click();
    };
    keys.digitKey = [this](int d) {
        numero(d).SetFocus();
        numero_Click(d);
    };
    keys.backKey = [this] {
        cmdCancel(0).SetFocus();
        cmdCancel_Click(0);
    };
    state.keyPress(keyAscii, keys);
}
