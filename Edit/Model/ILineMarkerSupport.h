// ILineMarkerSupport: the marker sources a text buffer knows of.
#pragma once

#include "Edit/Model/ILinesMarkers.h"

#include "Platform/CArray.h"

struct ILineMarkerSupport
{
    // Appends pMarkers unless present.
    virtual void AddLinesMarkers(ILinesMarkers* pMarkers) = 0;
    // Removes the first equal entry.
    virtual void RemoveLinesMarkers(ILinesMarkers* pMarkers) = 0;
    // Copies the whole list into aMarkers.
    virtual void GetLinesMarkers(CArray<ILinesMarkers*, ILinesMarkers*>& aMarkers) = 0;
    // Frees the first entry and empties the list.
    virtual void DeleteLinesMarkers() = 0;

protected:
    ~ILineMarkerSupport() = default;
};
