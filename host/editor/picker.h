// Finding the object at a point: what the editor needs of hit-testing.
#pragma once

#include "sdk/hxdbid.h"
#include "sdk/hxge.h"

#include <vector>

class HxDbDatabase;

namespace korvex {

/// Where to look.
struct PickRequest {
    HxDbDatabase* database = nullptr;
    HxDbObjectId space;     ///< block record of the space that the point is in
    HxDbObjectId viewport;  ///< whose frozen layers count; null for none
    HxGePoint3d point;
    double halfSize = 0;           ///< of the pick box, in drawing units
    bool throughViewports = true;  ///< on paper: also what floating viewports show
};

/// What is there.
struct PickHit {
    HxDbObjectId entity;                   ///< the innermost object
    HxGeMatrix3d transform;                ///< from its coordinates to those of the space
    std::vector<HxDbObjectId> containers;  ///< the references that hold it, innermost first
};

/// The visible object that comes nearest within the pick box; false when there is none.
bool pickAt(const PickRequest& request, PickHit& hit);

/// A rectangle to select in.
struct AreaRequest {
    HxDbDatabase* database = nullptr;
    HxDbObjectId space;     ///< block record of the space that is worked in
    HxDbObjectId viewport;  ///< as in PickRequest; the rectangle's sides are parallel to those of its view
    HxGePoint3d first, second;  ///< opposite corners
    bool crossing = false;      ///< what touches the rectangle; else what lies in it as a whole
};

/// The visible top-level objects of the space that the rectangle takes, in drawing order. Of a reference all
/// that can be seen in it counts; one that holds too much to look at is judged by the box around it.
std::vector<HxDbObjectId> pickInArea(const AreaRequest& request);

/// The smallest box around all that is drawn in a space; false when nothing is.
bool spaceExtents(const HxDbDatabase& database, HxDbObjectId space, HxGePoint3d& low, HxGePoint3d& high);

}  // namespace korvex
