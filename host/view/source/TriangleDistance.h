#pragma once

#include <BVH_Tools.hxx>
#include <host/view/TriangleModel.h>

/// Squared distances (mm^2) between the elements of triangle models. A point in a model is a triangle whose
/// corners coincide.

inline double SquareDistance(const TriangleModel::Point& point, const TriangleModel::Triangle& triangle) {
    return BVH_Tools<double, 3>::PointTriangleSquareDistance(point, triangle.a, triangle.b, triangle.c);
}
/// Zero where the triangles intersect.
double SquareDistance(const TriangleModel::Triangle& a, const TriangleModel::Triangle& b);

inline double SquareDistanceToBox(const TriangleModel::Point& point, const TriangleModel::Point& low,
                                  const TriangleModel::Point& high) {
    return BVH_Tools<double, 3>::PointBoxSquareDistance(point, low, high);
}
/// Distance to the triangle's bounding box: a lower bound of that to the triangle.
double SquareDistanceToBox(const TriangleModel::Triangle& triangle, const TriangleModel::Point& low,
                           const TriangleModel::Point& high);
