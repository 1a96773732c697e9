#include <host/view/ViewShapeCollision.h>

#include "TriangleDistance.h"

#include <BVH_Distance.hxx>
#include <BVH_Tools.hxx>
#include <algorithm>
#include <cmath>
#include <gp_Trsf.hxx>
#include <host/view/TriangleModel.h>
#include <limits>
#include <stdexcept>

namespace {

using Point = TriangleModel::Point;
using Triangle = TriangleModel::Triangle;
using Tree = TriangleModel::Tree;

constexpr double Rounding = 1e-9;

/// Search of one tree for the element nearest to an object, within a limit.
template <class Object>
class Nearest : public BVH_Distance<double, 3, Object, Tree> {
public:
    Nearest(const Tree& tree, double squareLimit, bool anyIsEnough) : any(anyIsEnough) {
        this->SetBVHSet(const_cast<Tree*>(&tree)); // the traversal only reads, but takes a mutable pointer
        this->myDistance = squareLimit;
    }

    /// Lowers the limit to the nearest found so far; true when the search is over.
    bool Find(const Object& object) {
        this->SetObject(object);
        this->ComputeDistance();
        return Stop();
    }
    bool Found() const { return found; }

    Standard_Boolean RejectNode(const Point& low, const Point& high, double& metric) const override {
        metric = SquareDistanceToBox(this->myObject, low, high);
        return this->RejectMetric(metric);
    }
    Standard_Boolean Accept(const Standard_Integer index, const double&) override {
        const double square = SquareDistance(this->myObject, this->myBVHSet->Element(index));
        if (square > this->myDistance || std::isnan(square)) {
            return Standard_False;
        }
        this->myDistance = square;
        found = true;
        return Standard_True;
    }
    Standard_Boolean Stop() const override { return found && (any || this->myDistance == 0); }

private:
    bool any;
    bool found = false;
};

Point Moved(const Point& point, const gp_Trsf& trsf) {
    gp_XYZ moved(point.x(), point.y(), point.z());
    trsf.Transforms(moved);
    return Point(moved.X(), moved.Y(), moved.Z());
}

const TriangleModel& ModelOf(const opencascade::handle<ViewShape>& shape) {
    if (shape.IsNull()) {
        throw std::invalid_argument("ViewShapeCollision: null shape");
    }
    const TriangleModel& model = *shape->GetBVHMdl();
    if (model.Size() == 0) {
        throw std::invalid_argument("ViewShapeCollision: \"" + shape->GetName() +
                                    "\" has neither faces nor points, expected a shape to measure to");
    }
    return model;
}

ViewShapeCollision::NearestPoint Answer(bool found, double square, double tolerance) {
    if (!found) {
        return {false, std::numeric_limits<double>::infinity()};
    }
    const double distance = std::sqrt(square);
    return {true, std::min(distance, tolerance)};
}

} // namespace

ViewShapeCollision::NearestPoint
ViewShapeCollision::CalcPQPToleranceNereastPnt(const opencascade::handle<ViewShape>& a,
                                               const opencascade::handle<ViewShape>& b, double tolerance,
                                               int mode) {
    const TriangleModel* small = &ModelOf(a);
    const TriangleModel* large = &ModelOf(b);
    gp_Trsf smallInLarge = b->Transformation().Inverted() * a->Transformation();
    if (small->Size() > large->Size()) {
        std::swap(small, large);
        smallInLarge.Invert();
    }
    if (!(tolerance >= 0)) {
        return Answer(false, 0, tolerance);
    }
    const double limit = (tolerance + Rounding) * (tolerance + Rounding);
    if (small->IsSinglePoint()) {
        Nearest<Point> search(large->GetTree(), limit, mode == 0);
        search.Find(Moved(small->GetTree().Element(0).a, smallInLarge));
        return Answer(search.Found(), search.Distance(), tolerance);
    }
    Nearest<Triangle> search(large->GetTree(), limit, mode == 0);
    for (int i = 0; i < small->GetTree().Size(); ++i) {
        const Triangle& t = small->GetTree().Element(i);
        if (search.Find({Moved(t.a, smallInLarge), Moved(t.b, smallInLarge), Moved(t.c, smallInLarge)})) {
            break;
        }
    }
    return Answer(search.Found(), search.Distance(), tolerance);
}
