// The strings of the OpenFX interface, which stand for suites, actions, properties and their
// values.
#pragma once

inline constexpr char kOfxPropertySuite[] = "OfxPropertySuite";
inline constexpr char kOfxImageEffectSuite[] = "OfxImageEffectSuite";
inline constexpr char kOfxParameterSuite[] = "OfxParameterSuite";
inline constexpr char kOfxMessageSuite[] = "OfxMessageSuite";

inline constexpr char kOfxImageEffectPluginApi[] = "OfxImageEffectPluginAPI";

// Actions.
inline constexpr char kOfxActionLoad[] = "OfxActionLoad";
inline constexpr char kOfxActionUnload[] = "OfxActionUnload";
inline constexpr char kOfxActionDescribe[] = "OfxActionDescribe";
inline constexpr char kOfxActionCreateInstance[] = "OfxActionCreateInstance";
inline constexpr char kOfxActionDestroyInstance[] = "OfxActionDestroyInstance";
inline constexpr char kOfxActionPurgeCaches[] = "OfxActionPurgeCaches";
inline constexpr char kOfxActionInstanceChanged[] = "OfxActionInstanceChanged";
inline constexpr char kOfxActionEndSequenceRender[] = "OfxImageEffectActionEndSequenceRender";
inline constexpr char kOfxActionDescribeInContext[] = "OfxImageEffectActionDescribeInContext";
inline constexpr char kOfxActionGetClipPreferences[] = "OfxImageEffectActionGetClipPreferences";
inline constexpr char kOfxActionGetRegionOfDefinition[] =
    "OfxImageEffectActionGetRegionOfDefinition";
inline constexpr char kOfxActionGetRegionsOfInterest[] = "OfxImageEffectActionGetRegionsOfInterest";
inline constexpr char kOfxActionRender[] = "OfxImageEffectActionRender";

// Values.
inline constexpr char kOfxContextFilter[] = "OfxImageEffectContextFilter";
inline constexpr char kOfxContextGeneral[] = "OfxImageEffectContextGeneral";
inline constexpr char kOfxContextGenerator[] = "OfxImageEffectContextGenerator";
inline constexpr char kOfxBitDepthByte[] = "OfxBitDepthByte";
inline constexpr char kOfxBitDepthShort[] = "OfxBitDepthShort";
inline constexpr char kOfxBitDepthFloat[] = "OfxBitDepthFloat";
inline constexpr char kOfxImageComponentRGBA[] = "OfxImageComponentRGBA";
inline constexpr char kOfxImageComponentRGB[] = "OfxImageComponentRGB";
inline constexpr char kOfxImageOpaque[] = "OfxImageOpaque";
inline constexpr char kOfxImagePreMultiplied[] = "OfxImageAlphaPremultiplied";
inline constexpr char kOfxImageUnPreMultiplied[] = "OfxImageAlphaUnPremultiplied";
inline constexpr char kOfxImageFieldLower[] = "OfxFieldLower";
inline constexpr char kOfxImageFieldUpper[] = "OfxFieldUpper";
inline constexpr char kOfxImageEffectRenderUnsafe[] = "OfxImageEffectRenderUnsafe";
inline constexpr char kOfxParamInvalidateAll[] = "OfxParamInvalidateAll";
inline constexpr char kOfxParamDoubleTypeAngle[] = "OfxParamDoubleTypeAngle";
inline constexpr char kOfxParamStringIsFilePath[] = "OfxParamStringIsFilePath";
inline constexpr char kOfxParamStringIsMultiLine[] = "OfxParamStringIsMultiLine";
inline constexpr char kOfxTypeParameter[] = "OfxTypeParameter";
inline constexpr char kOfxChangeTime[] = "OfxChangeTime";
inline constexpr char kOfxChangeUserEdited[] = "OfxChangeUserEdited";
inline constexpr char kOfxMessageError[] = "OfxMessageError";
inline constexpr char kOfxOutputClip[] = "Output";
inline constexpr char kOfxSourceClip[] = "Source";

// Types of parameters.
inline constexpr char kOfxParamTypeInteger[] = "OfxParamTypeInteger";
inline constexpr char kOfxParamTypeDouble[] = "OfxParamTypeDouble";
inline constexpr char kOfxParamTypeDouble2D[] = "OfxParamTypeDouble2D";
inline constexpr char kOfxParamTypeRGB[] = "OfxParamTypeRGB";
inline constexpr char kOfxParamTypeBoolean[] = "OfxParamTypeBoolean";
inline constexpr char kOfxParamTypeChoice[] = "OfxParamTypeChoice";
inline constexpr char kOfxParamTypeString[] = "OfxParamTypeString";
inline constexpr char kOfxParamTypeGroup[] = "OfxParamTypeGroup";
inline constexpr char kOfxParamTypePage[] = "OfxParamTypePage";

// Properties of all objects.
inline constexpr char kOfxPropName[] = "OfxPropName";
inline constexpr char kOfxPropType[] = "OfxPropType";
inline constexpr char kOfxPropLabel[] = "OfxPropLabel";
inline constexpr char kOfxPropTime[] = "OfxPropTime";
inline constexpr char kOfxPropVersion[] = "OfxPropVersion";
inline constexpr char kOfxPropVersionLabel[] = "OfxPropVersionLabel";
inline constexpr char kOfxPropPluginDescription[] = "OfxPropPluginDescription";
inline constexpr char kOfxPropChangeReason[] = "OfxPropChangeReason";

// Properties of the effect, its clips and images, and of actions.
inline constexpr char kOfxEffectGrouping[] = "OfxImageEffectPluginPropGrouping";
inline constexpr char kOfxEffectSupportedContexts[] = "OfxImageEffectPropSupportedContexts";
inline constexpr char kOfxEffectSupportedPixelDepths[] = "OfxImageEffectPropSupportedPixelDepths";
inline constexpr char kOfxEffectSupportedComponents[] = "OfxImageEffectPropSupportedComponents";
inline constexpr char kOfxEffectRenderThreadSafety[] = "OfxImageEffectPluginRenderThreadSafety";
inline constexpr char kOfxEffectHostFrameThreading[] = "OfxImageEffectPluginPropHostFrameThreading";
inline constexpr char kOfxEffectFieldRenderTwice[] =
    "OfxImageEffectPluginPropFieldRenderTwiceAlways";
inline constexpr char kOfxEffectSupportsMultiResolution[] =
    "OfxImageEffectPropSupportsMultiResolution";
inline constexpr char kOfxEffectSupportsTiles[] = "OfxImageEffectPropSupportsTiles";
inline constexpr char kOfxEffectTemporalClipAccess[] = "OfxImageEffectPropTemporalClipAccess";
inline constexpr char kOfxEffectSequentialRender[] = "OfxImageEffectInstancePropSequentialRender";
inline constexpr char kOfxEffectContext[] = "OfxImageEffectPropContext";
inline constexpr char kOfxEffectFrameRate[] = "OfxImageEffectPropFrameRate";
inline constexpr char kOfxEffectProjectSize[] = "OfxImageEffectPropProjectSize";
inline constexpr char kOfxEffectProjectOffset[] = "OfxImageEffectPropProjectOffset";
inline constexpr char kOfxEffectRegionOfDefinition[] = "OfxImageEffectPropRegionOfDefinition";
inline constexpr char kOfxEffectRenderScale[] = "OfxImageEffectPropRenderScale";
inline constexpr char kOfxEffectRenderWindow[] = "OfxImageEffectPropRenderWindow";
inline constexpr char kOfxEffectFieldToRender[] = "OfxImageEffectPropFieldToRender";
inline constexpr char kOfxEffectFrameVarying[] = "OfxImageEffectFrameVarying";
inline constexpr char kOfxEffectPreMultiplication[] = "OfxImageEffectPropPreMultiplication";
inline constexpr char kOfxEffectPixelDepth[] = "OfxImageEffectPropPixelDepth";
inline constexpr char kOfxEffectComponents[] = "OfxImageEffectPropComponents";
inline constexpr char kOfxClipRegionOfInterestSource[] = "OfxImageClipPropRoI_Source";
inline constexpr char kOfxClipConnected[] = "OfxImageClipPropConnected";
inline constexpr char kOfxClipOptional[] = "OfxImageClipPropOptional";
inline constexpr char kOfxImageData[] = "OfxImagePropData";
inline constexpr char kOfxImageBounds[] = "OfxImagePropBounds";
inline constexpr char kOfxImageRegionOfDefinition[] = "OfxImagePropRegionOfDefinition";
inline constexpr char kOfxImageRowBytes[] = "OfxImagePropRowBytes";
inline constexpr char kOfxImageField[] = "OfxImagePropField";

// Properties of parameters.
inline constexpr char kOfxParamHint[] = "OfxParamPropHint";
inline constexpr char kOfxParamParent[] = "OfxParamPropParent";
inline constexpr char kOfxParamEnabled[] = "OfxParamPropEnabled";
inline constexpr char kOfxParamDefault[] = "OfxParamPropDefault";
inline constexpr char kOfxParamAnimates[] = "OfxParamPropAnimates";
inline constexpr char kOfxParamEvaluateOnChange[] = "OfxParamPropEvaluateOnChange";
inline constexpr char kOfxParamCacheInvalidation[] = "OfxParamPropCacheInvalidation";
inline constexpr char kOfxParamMin[] = "OfxParamPropMin";
inline constexpr char kOfxParamMax[] = "OfxParamPropMax";
inline constexpr char kOfxParamDisplayMin[] = "OfxParamPropDisplayMin";
inline constexpr char kOfxParamDisplayMax[] = "OfxParamPropDisplayMax";
inline constexpr char kOfxParamIncrement[] = "OfxParamPropIncrement";
inline constexpr char kOfxParamDoubleType[] = "OfxParamPropDoubleType";
inline constexpr char kOfxParamChoiceOption[] = "OfxParamPropChoiceOption";
inline constexpr char kOfxParamStringMode[] = "OfxParamPropStringMode";
inline constexpr char kOfxParamGroupOpen[] = "OfxParamPropGroupOpen";
inline constexpr char kOfxParamPageChild[] = "OfxParamPropPageChild";
inline constexpr char kOfxParamPageOrder[] = "OfxPluginPropParamPageOrder";
inline constexpr char kOfxParamHostBooleanAnimation[] = "OfxParamHostPropSupportsBooleanAnimation";
inline constexpr char kOfxParamHostChoiceAnimation[] = "OfxParamHostPropSupportsChoiceAnimation";
