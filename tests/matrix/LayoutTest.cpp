#include "matrix/RotationMatrix.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <initializer_list>

using M = Matrix<double>;
using V = Vector<double>;
using S = SquareMatrix<double>;
using R = RotationMatrix<double>;

// The place of a virtual operation in the table: the Itanium C++ ABI keeps it in the pointer.
static std::size_t slot(auto operation) {
    std::size_t words[2];
    static_assert(sizeof operation == sizeof words);
    std::memcpy(words, &operation, sizeof words);
    return words[0] / sizeof(void*);
}

static bool consecutive(std::size_t first, auto... operations) {
    return ((slot(operations) == first++) && ...);
}

TEST(Layout, VirtualOperationsStandInTheirOrder) {
    EXPECT_TRUE(consecutive(
        2, &M::assign, &M::assignArray, &M::resize, &M::resizeKeep, &M::reshape, &M::getCols,
        &M::getRows, &M::transpose, &M::setRow, &M::setZero, &M::setIdentity, &M::setDiagonal,
        &M::addAssign, &M::subAssign, &M::mulAssign, &M::divAssign, &M::multiply, &M::divide,
        &M::splitTriangular, &M::svd, &M::qr, &M::pseudoInverseOf, &M::pseudoInvert,
        &M::pseudoSolve, &M::hypotenuse, &M::bidiagonalize, &M::accumulateTransforms));
    const std::size_t next = slot(&M::accumulateTransforms) + 1;
    EXPECT_TRUE(consecutive(next, &V::setLength, &V::reorient, &V::length, &V::isColumn,
                            &V::toArray, &V::copyTo, &V::copyFrom));
    EXPECT_TRUE(consecutive(next, &S::assignSquare, &S::resizeSquare, &S::reshapeSquare,
                            &S::luDecompose, &S::luSolve, &S::inverseOf, &S::invert, &S::solve,
                            &S::cholesky));
    EXPECT_TRUE(consecutive(slot(&S::cholesky) + 1, &R::setFromElements, &R::assignMatrix,
                            &R::applyTo, &R::applyInPlace, &R::setRotation, &R::resetRotation));
}

TEST(Layout, FieldsStandInTheirOrder) {
    const S m(2);
    const auto* word = reinterpret_cast<const void* const*>(&m);
    for (const void* field :
         std::initializer_list<const void*>{&m.errorFlag, &m.rowTable, &m.dataBlock, &m.rowCount}) {
        EXPECT_EQ(field, ++word);
    }
    EXPECT_TRUE(&m.colCount == &m.rowCount + 1 && sizeof m == 4 * sizeof(void*) + 8);
    const R r(2);
    const char* start = reinterpret_cast<const char*>(&r);
    EXPECT_EQ(start + sizeof m, reinterpret_cast<const char*>(&r.p));
    EXPECT_TRUE(&r.q == &r.p + 1 && &r.s == &r.c + 1);
    EXPECT_EQ(&r.q + 1, reinterpret_cast<const void*>(&r.c));
}
