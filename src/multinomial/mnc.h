#pragma once
// Kernels of the multinomial theorem applied to samples drawn with replacement: n draws from a
// cohort of n give n^n sampling sequences, and a composition (how often each individual was
// drawn) is reached by n! / (c1! c2! ... ) of them, its multinomial coefficient (MNC).
#include <cstdint>

namespace korvan {

// n! as a double (exact up to 22!).
double FactorialOf(int n);
// n^n as a double (finite up to n = 143).
double PowerNN(int n);
// The number of different compositions of n draws from n individuals, C(2n - 1, n), formed as
// a running product in doubles.
double CompositionCount(int n);
// n! divided by the factorial of each count above 1; counts[0..k-1].
double MultinomialCoefficient(double nFactorial, const int* counts, int k);
// The share of the n^n sequences that give a composition of coefficient mnc; when n! or n^n
// overflow a double (n above 143), formed through logarithms of the counts.
double MultinomialProbability(double mnc, double nPowerN, int n, const int* counts, int k);

// The patterns of counts of n draws in the order the expansion lists them: (n), (n-1, 1),
// (n-2, 2), (n-2, 1, 1), ... (1, ..., 1), each in descending order. Call with parts empty
// (count 0) for the first; returns false after the last.
bool NextCountPattern(int n, int* parts, int& count);

}  // namespace korvan
