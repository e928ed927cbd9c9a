#include <windows.h>

#include <limits>

int MulDiv(int number, int numerator, int denominator) {
  if (denominator == 0) return -1;
  LONGLONG product = static_cast<LONGLONG>(number) * numerator;
  LONGLONG divisor = denominator;
  if (divisor < 0) {
    divisor = -divisor;
    product = -product;
  }
  const LONGLONG half = divisor / 2;
  const LONGLONG result = (product < 0 ? product - half : product + half) / divisor;
  return result > std::numeric_limits<int>::max() || result < std::numeric_limits<int>::min()
             ? -1
             : static_cast<int>(result);
}
