#pragma once

#include "RawText.h"
#include "Records.h"
#include "Rivals.h"

namespace QELModels::bench {

/// The records of a document, read by hand.
Assets<RawText> assetsByHand(const Document& document);

}  // namespace QELModels::bench
