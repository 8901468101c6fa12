/* Functions that xfcflow has components for and C has not, so that a program compiles on a host too. */
#ifndef XFC_H
#define XFC_H

#ifdef __XFCFLOW__

double inv(double x);
float invf(float x);
double invsqr(double x);
float invsqrf(float x);

#else

#include <math.h>

/* 1 / x */
static inline double inv(double x) { return 1.0 / x; }
static inline float invf(float x) { return 1.0f / x; }

/* 1 / sqrt(x) */
static inline double invsqr(double x) { return 1.0 / sqrt(x); }
static inline float invsqrf(float x) { return (float)(1.0 / sqrt((double)x)); }

#endif

#endif
