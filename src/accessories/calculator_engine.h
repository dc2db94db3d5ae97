#pragma once
// The calculator's state machine, apart from its window: six variables, the display's text and
// the memory mark, and what each key does to them. Several reactions differ from an ordinary
// pocket calculator on purpose (no chained evaluation, "=" repeating result op result, percent
// read as a decimal fraction, division by zero giving 0, "Error" for the square root of 0).
//
// Three conversions meet here and are never unified: the value of the display (the lenient
// leading-number reading, "." always the decimal point), a number written as text, and the
// strict locale-aware conversion that MS alone uses.
//
// Arithmetic faults are the classic runtime's: a result beyond the double range raises
// "Overflow" (6) rather than giving an infinity. Only "=" traps them; everywhere else they
// travel to the window's handler boundary, as do the square root of a negative value (5) and
// MS on a display that is no number (13).

#include <QString>

#include <functional>

class CalculatorEngine {
public:
    // The operator keys' captions by index: 0 "/", 1 "+", 2 "-", 3 "*".
    static const QString kOperators[4];

    // What the keyboard handler does with a key it maps: focus that key and run its click
    // handler. The window passes its own; unset ones run the engine's step directly.
    struct Keys {
        std::function<void(int index)> operatorKey;
        std::function<void()> dotKey;
        std::function<void(int digit)> digitKey;
        std::function<void()> backKey;
    };

    // The keys. Each returns whether the key's handler goes on to focus "=" where the window
    // does that; the others never move the focus.
    void digit(int index);                        // numero(Index)
    bool dot();                                   // cmdDot; false: the display had its "." already
    void operatorKey(int index);                  // operator(Index)
    // "=": a fault is caught; the display shows "Error!!!" and report gets the fault's
    // description before NewNumber is set (the message box waits with "Error!!!" shown).
    void equal(const std::function<void(const QString& description)>& report = {});
    bool cancel(int index);                       // cmdCancel(Index); false: "Back" after a result
    void function(int index);                     // cmdFunction(Index)
    void memory(int index);                       // cmdMemory(Index)
    // The keyboard handler on "=", given the typed character code.
    void keyPress(int keyAscii, const Keys& keys = {});

    // The value of the display: its leading number, 0 where there is none. A number beyond the
    // double range (a very long run of typed digits) is "Overflow".
    static double valueOf(const QString& text);

    // The display's text and lblMem's caption.
    QString display = QStringLiteral("0");
    QString memoryMark;

    // The window-level variables, as the design names them.
    bool NewNumber = false;
    double Operand1 = 0;
    double Operand2 = 0;
    QString PendingOperator;
    double Memory = 0;
    bool OperatorPressed = false;
};
