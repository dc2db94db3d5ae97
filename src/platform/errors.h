#pragma once
// The classic run-time error model: an error is a number with a description; a handler
// either ignores errors statement by statement (OnErrorResumeNext) or traps nothing, and
// then the error travels to the handler boundary, which reports it and ends the program.

#include <QString>
#include <exception>
#include <utility>

namespace platform {

// Error numbers of the classic runtime that this program can raise.
enum ErrorNumber : int {
    ErrInvalidProcedureCall = 5,
    ErrOverflow = 6,
    ErrOutOfMemory = 7,
    ErrSubscriptOutOfRange = 9,
    ErrDivisionByZero = 11,
    ErrTypeMismatch = 13,
    ErrBadFileNameOrNumber = 52,
    ErrFileNotFound = 53,
    ErrBadFileMode = 54,
    ErrFileAlreadyOpen = 55,
    ErrDeviceIO = 57,
    ErrInputPastEndOfFile = 62,
    ErrDeviceUnavailable = 68,
    ErrPermissionDenied = 70,
    ErrPathFileAccess = 75,
    ErrPathNotFound = 76,
    ErrObjectNotSet = 91,
    ErrNoSuchElement = 340,
    ErrObjectAlreadyLoaded = 360,
    ErrObjectWasUnloaded = 364,
    ErrInvalidPropertyValue = 380,
    ErrObjectRequired = 424,
    ErrNotSupported = 438,
    ErrInvalidPicture = 481,
};

// The classic description of an error number ("Application-defined or object-defined error"
// for numbers the runtime does not name).
QString errorDescription(int number);

class RuntimeError : public std::exception {
public:
    explicit RuntimeError(int number);
    RuntimeError(int number, QString description);

    int number() const { return m_number; }
    const QString& description() const { return m_description; }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    int m_number;
    QString m_description;
    QByteArray m_what;
};

[[noreturn]] void raiseError(int number);

// The text of the report of an untrapped error: "Run-time error 'N':", a blank line, the
// description.
QString untrappedReport(const RuntimeError& error);

// Thrown by End (and after an untrapped error when a test took the report) to unwind every
// handler still on the stack. It is not a RuntimeError, so no OnErrorResumeNext swallows it.
struct ProgramEnd {};

// "On Error Resume Next": each statement runs through operator(); a statement that raises a
// run-time error is skipped and the next one runs. Err() is the last error's number (0: none).
//
//     OnErrorResumeNext next;
//     next([&] { Open(path, OpenMode::Input, 1); });
//     next([&] { text = InputChars(LOF(1), 1); });
class OnErrorResumeNext {
public:
    template <class Statement>
    bool operator()(Statement&& statement)
    {
        try {
            std::forward<Statement>(statement)();
            return true;
        } catch (const RuntimeError& e) {
            m_err = e.number();
            return false;
        }
    }
    int Err() const { return m_err; }

private:
    int m_err = 0;
};

// "On Error GoTo" the end of the handler: the first statement that fails ends the block,
// silently. Returns the error's number, or 0.
template <class Block>
int OnErrorExit(Block&& block)
{
    try {
        std::forward<Block>(block)();
        return 0;
    } catch (const RuntimeError& e) {
        return e.number();
    }
}

} // namespace platform

namespace platform {

// An object variable: it refers to an object once Set; reaching through one that was never
// set raises "Object variable or With block variable not set" (91).
template <class T>
class ObjectVariable {
public:
    void Set(T& object) { m_object = &object; }
    T* operator->() const
    {
        if (!m_object)
            raiseError(ErrObjectNotSet);
        return m_object;
    }

private:
    T* m_object = nullptr;
};

} // namespace platform
