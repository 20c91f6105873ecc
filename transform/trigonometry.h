#pragma once

// The one place from which the transforms take sines and cosines. Angles are in radians.

double sine(double angle);
double cosine(double angle);
