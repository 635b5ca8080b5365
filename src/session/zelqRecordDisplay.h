#pragma once

#include <span>

#include "session/zelqLogCollection.h"
#include "session/zelqRecordList.h"

/// Puts all records whose log has the slot, or all with kAllLogs, into the container, numbers them
/// from 0 in the collection's order and sorts the container.
void showRecords(zelqRecordList& container, const zelqLogCollection& records, int slot);

/// Puts the records of a filter's result whose log has the slot, or all with kAllLogs, into the
/// container. Differs from showRecords() in two ways that users see: a record's number is its place
/// in the whole result, shown or not, and a container that was empty keeps the result's order.
void showFilteredRecords(zelqRecordList& container, const zelqLogCollection& records,
                         std::span<zelqBCnrObject* const> result, int slot);

/// What collapsing leaves on the collection's records that have no expansion data: a blank mark.
void collapseUnexpandable(const zelqLogCollection& records);
