#pragma once

// Where the property maps are, and the words of a property panel.

constexpr char kPropertyMapPath[] = ":/PropertyMap/PropertyMap.json";
constexpr char kRdmPropertyMapPath[] = ":/PropertyMap/TalvisRDMPropertyMap.json";
/// The place of a local override of the map. Nothing reads it.
constexpr char kPropertyMapOverridePath[] = "/PropertyMap/PropertyMap.modified.json";

constexpr char kUnsupportedToken[] = "Unsupported Token";
constexpr char kUnsupportedMapping[] = "Unsupported Mapping";
constexpr char kInvalidMapping[] = "Invalid Mapping";
constexpr char kUnsupportedParameterId[] = "Unsupported Parameter ID";
constexpr char kUnsupportedProperty[] = "Unsupported Property";
constexpr char kPropertyName[] = "Property Name";
constexpr char kPropertyDescription[] = "Property Description";
constexpr char kPropertyType[] = "Property Type";
constexpr char kPropertyMinValue[] = "Property Min Value";
constexpr char kPropertyMaxValue[] = "Property Max Value";
constexpr char kPropertyOptions[] = "Property Options";
constexpr char kCurrentValue[] = "Current Value";
