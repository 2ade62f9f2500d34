#pragma once

/// @file
/// The whole library in one include. Applications that mind their compile times include the headers of what
/// they use: each can be included alone.

/// @namespace QELModels
/// Models of a video platform's content API: records, the mappers that fill them, and the facts that players
/// and listing screens ask for. Names in a nested namespace `detail` are not for users.

#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/KeyPath.h"

#include "QELModels/Values/Color.h"
#include "QELModels/Values/Date.h"
#include "QELModels/Values/Error.h"
#include "QELModels/Values/Number.h"
#include "QELModels/Values/Size.h"
#include "QELModels/Values/Text.h"
#include "QELModels/Values/URL.h"

#include "QELModels/Process/Clock.h"
#include "QELModels/Process/Log.h"
#include "QELModels/Process/MainScreen.h"

#include "QELModels/Memory/Block.h"
#include "QELModels/Memory/Zone.h"

#include "QELModels/Representation/Representation.h"
#include "QELModels/Representation/RepresentationBuilder.h"

#include "QELModels/Records/Declaration.h"
#include "QELModels/Records/Field.h"
#include "QELModels/Records/List.h"
#include "QELModels/Records/MappingFault.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Records/ObjectClass.h"
#include "QELModels/Records/Property.h"
#include "QELModels/Records/PropertyKind.h"
#include "QELModels/Records/PropertyWriter.h"
#include "QELModels/Records/Ref.h"
#include "QELModels/Records/Value.h"
#include "QELModels/Records/ValueTransformer.h"

#include "QELModels/Mapping/FEMAttribute.h"
#include "QELModels/Mapping/FEMCollection.h"
#include "QELModels/Mapping/FEMDeserializer.h"
#include "QELModels/Mapping/FEMMapRule.h"
#include "QELModels/Mapping/FEMMapping.h"
#include "QELModels/Mapping/FEMObserver.h"
#include "QELModels/Mapping/FEMPath.h"
#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Mapping/FEMRules.h"
#include "QELModels/Mapping/FEMUnreadKeys.h"

#include "QELModels/Categories/NSString+HTMLRemoval.h"
#include "QELModels/Categories/NSURL+QELKavoHelper.h"
#include "QELModels/Categories/QELKavoConfiguration.h"
#include "QELModels/Categories/UIColor+QELUtils.h"

#include "QELModels/Functions/QELAssetEnumerations.h"
#include "QELModels/Functions/QELDateFormattingFunctions.h"
#include "QELModels/Functions/QELModelFunctions.h"
#include "QELModels/Functions/QELModels_vers.h"

#include "QELModels/Transformers/QELHTMLTransformer.h"
#include "QELModels/Transformers/QELNSURLTransformer.h"
#include "QELModels/Transformers/QELTimestampTransformer.h"
#include "QELModels/Transformers/QELUIColorTransformer.h"
#include "QELModels/Transformers/QELValueTransformer.h"
#include "QELModels/Transformers/QELValueTransformerRegistry.h"

#include "QELModels/Models/QELAsset+Utilities.h"
#include "QELModels/Models/QELAsset.h"
#include "QELModels/Models/QELAssetAdditional+Utils.h"
#include "QELModels/Models/QELAssetAdditional.h"
#include "QELModels/Models/QELAssetAdditionalSettings.h"
#include "QELModels/Models/QELAssetAdditionalSubtitle.h"
#include "QELModels/Models/QELAssetChapter.h"
#include "QELModels/Models/QELAssetCuePoint.h"
#include "QELModels/Models/QELAssetImages.h"
#include "QELModels/Models/QELAssetLead.h"
#include "QELModels/Models/QELAssetSeries.h"
#include "QELModels/Models/QELAssetStreamUrls.h"
#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Models/QELCategory+Utilities.h"
#include "QELModels/Models/QELCategory.h"
#include "QELModels/Models/QELCategoryAdditional.h"
#include "QELModels/Models/QELCategoryAdditionalPlayerBranding.h"
#include "QELModels/Models/QELCategoryLastAsset.h"
#include "QELModels/Models/QELEditorial+Utilities.h"
#include "QELModels/Models/QELEditorial.h"
#include "QELModels/Models/QELFlightTimes.h"
#include "QELModels/Models/QELSeason+Utilities.h"
#include "QELModels/Models/QELSeason.h"
#include "QELModels/Models/QELStreamConfiguration.h"

#include "QELModels/Mappers/QELAssetMapper.h"
#include "QELModels/Mappers/QELAssetsMapper.h"
#include "QELModels/Mappers/QELCategoriesMapper.h"
#include "QELModels/Mappers/QELCategoryMapper.h"
#include "QELModels/Mappers/QELEditorialMapper.h"
#include "QELModels/Mappers/QELEditorialsMapper.h"
#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Mappers/QELResponse.h"
#include "QELModels/Mappers/QELSeasonMapper.h"
#include "QELModels/Mappers/QELSeasonsMapper.h"
