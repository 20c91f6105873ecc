#pragma once

// Fast Hartley transform of a real signal, radix 4, in place: with cas x = cos x + sin x,
//     H[k] = sum_j f[j] cas(2 pi j k / n)
// (R. N. Bracewell, "The fast Hartley transform", Proc. IEEE 72 (1984) 1010-1018). The twiddles
// come from a recursion over small tables, whose error does not grow with n (O. Buneman, "Stable
// on-line creation of sines or cosines of successive angles", Proc. IEEE 75 (1987) 1434-1435); no
// sine or cosine is called. An object holds nothing, so objects may work in several threads at
// once.
class HartleyTransform {
public:
    virtual ~HartleyTransform() = default;

    // f: n samples, n a power of two from 1 to 2^30, not tested. With normalise not 0 the result is
    // divided by n, so that hartley(f, n, 0) followed by hartley(f, n, 1) restores f. Allocates
    // nothing.
    void hartley(double* f, int n, int normalise);
};
