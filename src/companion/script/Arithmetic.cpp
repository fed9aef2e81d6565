#include "companion/script/Coercions.h"
#include "companion/script/Dates.h"
#include "companion/script/Operators.h"
#include "companion/script/ThrownFailures.h"

#include <cmath>
#include <limits>
#include <optional>

namespace Orbita {
namespace {

constexpr int numberTooLarge = -2702;

Value finite(double result)
{
    if (!std::isfinite(result))
        failScript(numberTooLarge, QStringLiteral("The result of a calculation is too large, or no number."));
    return result;
}

/// A real without a fraction as an integer where it fits into one.
Value whole(double result)
{
    constexpr double largest = 9.2e18;
    return std::abs(result) < largest ? Value(qint64(result)) : finite(result);
}

/// Nothing where the result is no integer, or too large for one.
std::optional<qint64> calculateIntegers(Operator op, qint64 left, qint64 right)
{
    qint64 result = 0;
    switch (op) {
    case Operator::Add:
        return __builtin_add_overflow(left, right, &result) ? std::nullopt : std::optional(result);
    case Operator::Subtract:
        return __builtin_sub_overflow(left, right, &result) ? std::nullopt : std::optional(result);
    case Operator::Multiply:
        return __builtin_mul_overflow(left, right, &result) ? std::nullopt : std::optional(result);
    case Operator::IntegerDivide:
        return left == std::numeric_limits<qint64>::min() && right == -1 ? std::nullopt : std::optional(left / right);
    case Operator::Modulo:
        return right == -1 ? 0 : left % right;
    default:
        return {};
    }
}

Value calculateReals(Operator op, double left, double right)
{
    switch (op) {
    case Operator::Add:
        return finite(left + right);
    case Operator::Subtract:
        return finite(left - right);
    case Operator::Multiply:
        return finite(left * right);
    case Operator::Divide:
        return finite(left / right);
    case Operator::IntegerDivide:
        return whole(std::trunc(left / right));
    case Operator::Modulo:
        return finite(std::fmod(left, right));
    default:
        return finite(std::pow(left, right));
    }
}

/// A date with a number of seconds added or taken away, and the seconds between two.
std::optional<Value> calculateDates(Operator op, const Value &left, const Value &right)
{
    const auto *date = left.as<QDateTime>();
    if (!date || (op != Operator::Add && op != Operator::Subtract))
        return {};
    const auto *other = right.as<QDateTime>();
    if (other && op == Operator::Subtract)
        return qint64(other->secsTo(*date));
    const double seconds = toReal(right);
    return movedBy(*date, op == Operator::Add ? seconds : -seconds);
}

} // namespace

Value calculate(Operator op, const Value &left, const Value &right)
{
    if (const auto date = calculateDates(op, left, right))
        return *date;
    const Value leftNumber = toNumber(left);
    const Value rightNumber = toNumber(right);
    const bool divides = op == Operator::Divide || op == Operator::IntegerDivide || op == Operator::Modulo;
    if (divides && toReal(rightNumber) == 0.0)
        failScript(ScriptFailure::divisionByZero, describe(left) + QStringLiteral(" cannot be divided by zero."));
    const auto *leftInteger = leftNumber.as<qint64>();
    const auto *rightInteger = rightNumber.as<qint64>();
    if (leftInteger && rightInteger) {
        if (const auto result = calculateIntegers(op, *leftInteger, *rightInteger))
            return *result;
    }
    return calculateReals(op, toReal(leftNumber), toReal(rightNumber));
}

Value negated(const Value &value)
{
    return calculate(Operator::Subtract, qint64(0), value);
}

} // namespace Orbita
