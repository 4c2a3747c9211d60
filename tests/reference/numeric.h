#pragma once

namespace reference {

// Truncation toward zero; out of range saturates, a not-a-number gives 0.
int truncateToInt(float value);
int truncateToInt(double value);

float myAbs(float x);
int myRound(float x);
int myClamp(int v, int lo, int hi);
float mySqrt(float x);
float myExp(float x);
float myLn(float x);
float myPow(float a, float b);

}  // namespace reference
