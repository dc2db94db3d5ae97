#include "calculator_engine.h"

#include "platform/convert.h"
#include "platform/errors.h"
#include "platform/key_codes.h"

#include <cmath>

using namespace platform;

const QString CalculatorEngine::kOperators[4] = {QStringLiteral("/"), QStringLiteral("+"), QStringLiteral("-"),
                                                 QStringLiteral("*")};

namespace {

// The classic runtime's floating-point check: a finite operation whose result leaves the
// double range is "Overflow", never an infinity on the display.
double checked(double result)
{
    if (std::isinf(result) || std::isnan(result))
        raiseError(ErrOverflow);
    return result;
}

} // namespace

double CalculatorEngine::valueOf(const QString& text)
{
    return checked(Val(text));
}

void CalculatorEngine::digit(int index)
{
    OperatorPressed = false;
    if (NewNumber) {
        display.clear();
        NewNumber = false;
    }
    if (display.startsWith(QLatin1Char('0'))) {
        if (display.contains(QLatin1Char('.'))) {
            display += QString::number(index);
            return;
        }
        display.clear();
    }
    display += QString::number(index);
}

bool CalculatorEngine::dot()
{
    if (!NewNumber) {
        if (display.contains(QLatin1Char('.')))
            return false;
        display += QLatin1Char('.');
    }
    if (NewNumber) {
        display = QStringLiteral("0.");
        NewNumber = false;
    }
    return true;
}

void CalculatorEngine::operatorKey(int index)
{
    OperatorPressed = true;
    Operand1 = valueOf(display);
    PendingOperator = kOperators[index];
    NewNumber = true;
}

void CalculatorEngine::equal(const std::function<void(const QString&)>& report)
{
    try {
        Operand2 = valueOf(display);
        double result = 0;
        // Tested one after the other, each on its own, as the keys were designed.
        if (PendingOperator == QLatin1String("+"))
            result = checked(Operand1 + Operand2);
        if (PendingOperator == QLatin1String("-"))
            result = checked(Operand1 - Operand2);
        if (PendingOperator == QLatin1String("*"))
            result = checked(Operand1 * Operand2);
        // Kept: a division by zero gives 0; a user sees "0" where a pocket calculator shows an error.
        if (PendingOperator == QLatin1String("/") && Operand2 != 0)
            result = checked(Operand1 / Operand2);
        display = DoubleToText(result);
        NewNumber = true;
        // Kept: PendingOperator stays, so "=" again repeats it on the result: 2 + 3 = = shows 10, not 8.
        Operand1 = result;
    } catch (const RuntimeError& fault) {
        display = QStringLiteral("Error!!!");
        if (report)
            report(fault.description());
        NewNumber = true;
    }
}

bool CalculatorEngine::cancel(int index)
{
    switch (index) {
    case 0: {
        if (NewNumber)
            return false;
        if (display.size() == 1) {
            display = QStringLiteral("0");
        } else {
            // Left(text, Len(text) - 1) fails on the empty text; the failure is ignored.
            OnErrorResumeNext next;
            next([&] {
                if (display.isEmpty())
                    raiseError(ErrInvalidProcedureCall);
                display.chop(1);
            });
        }
        return true;
    }
    case 1:
        Operand1 = 0;
        Operand2 = 0;
        display = QStringLiteral("0");
        return false;
    case 2:
        display = QStringLiteral("0");
        return false;
    default:
        raiseError(ErrNoSuchElement);
    }
}

void CalculatorEngine::function(int index)
{
    switch (index) {
    case 0:
        display = DoubleToText(-valueOf(display));
        break;
    case 1:
        if (valueOf(display) != 0)
            display = DoubleToText(checked(1 / valueOf(display)));
        break;
    case 2:
        // Kept: the digits read as a decimal fraction ("5" is 0.5): 200 * 5 % shows 100, not 10.
        display = DoubleToText(checked(valueOf(QLatin1Char('.') + display) * Operand1));
        break;
    case 3:
        if (valueOf(display) == 0) {
            display = QStringLiteral("Error"); // Kept: a user sees "Error" for the root of 0, not 0
        } else {
            const double value = valueOf(display);
            if (value < 0)
                raiseError(ErrInvalidProcedureCall); // the runtime's square root of a negative value
            display = DoubleToText(std::sqrt(value));
        }
        break;
    default:
        raiseError(ErrNoSuchElement);
    }
}

void CalculatorEngine::memory(int index)
{
    switch (index) {
    case 0:
        Memory = 0;
        memoryMark.clear();
        break;
    case 1:
        if (display != QLatin1String("0")) {
            Memory = checked(Memory + valueOf(display));
            memoryMark = QStringLiteral("M");
        }
        break;
    case 2:
        if (display != QLatin1String("0")) {
            if (OperatorPressed) {
                memoryMark.clear();
                Memory = 0;
            } else {
                memoryMark = QStringLiteral("M");
                Memory = TextToDouble(display);
            }
        }
        break;
    case 3:
        display = DoubleToText(Memory);
        break;
    default:
        raiseError(ErrNoSuchElement);
    }
}

void CalculatorEngine::keyPress(int keyAscii, const Keys& keys)
{
    const bool isDigit = keyAscii >= '0' && keyAscii <= '9';
    auto pressDigit = [&] {
        if (keys.digitKey)
            keys.digitKey(keyAscii - '0');
        else
            digit(keyAscii - '0');
    };
    // Every step runs for every key, one after the other; a key can set off more than one.
    for (int i = 0; i < int(std::size(kOperators)); ++i) {
        if (keyAscii == kOperators[i].at(0).unicode()) {
            if (keys.operatorKey)
                keys.operatorKey(i);
            else
                operatorKey(i);
        }
    }
    if (keyAscii == '.') {
        if (keys.dotKey)
            keys.dotKey();
        else
            dot();
    }
    if (display.startsWith(QLatin1Char('0'))) {
        if (display.contains(QLatin1Char('.'))) {
            if (isDigit) {
                pressDigit();
                return;
            }
        } else {
            display.clear(); // for any key: a letter typed on "0" leaves the display empty
        }
    }
    if (isDigit) {
        pressDigit();
        return;
    }
    if (keyAscii == vbKeyBack) {
        if (keys.backKey)
            keys.backKey();
        else
            cancel(0);
    }
}
