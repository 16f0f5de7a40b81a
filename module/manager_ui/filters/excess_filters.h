// Drawings that carry far more layer filters than layers.
#pragma once

class HxDbDictionary;
class HxLyLayerFilter;

/// Layers of the current document's drawing; 0 without one.
int getLayersNumber();
/// Stored filters of the current document's drawing, of both of its dictionaries; 0 without one.
int getLayerFiltersNumber();
/// Entries of a dictionary in a dictionary; 0 when there is none of that name.
int getSubItemNum(HxDbDictionary* dictionary, const wchar_t* name);
/// Takes out an entry, if there is one. REQUIRES: the dictionary is open for write.
void removeDictionary(HxDbDictionary* dictionary, const wchar_t* name);
/// Deletes all stored filters of the current document's drawing.
void removeAllFiltersTree();
/// Deletes the filters nested in a filter, which may be null.
void removeAllFiltersTree(HxLyLayerFilter* filter);
