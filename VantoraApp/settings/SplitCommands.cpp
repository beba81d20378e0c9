#include "VantoraApp/CActionUtils.h"

// The spelling is part of saved options: "excludeifnotextcontainted" stays as it is.
const QList<QString> gCommandsList = {
    "splitiftextispresent",
    "splitiftextcontainedinbox",
    "splitiftextisinarun",
    "splitontextchange",
    "splitontextchangeafterstring",
    "splitontextchangeafterstringonly",
    "splitifthistextrepeats",
    "skipheader",
    "providebasefilename",
    "providefilename",
    "providefilenameifstringinbox",
    "providefilenamefromfirstword",
    "providefilenamefromselectedword",
    "providefilenamefromrangeofcharacters",
    "providefilenameafterstring",
    "providefilenameafterstringinbox",
    "addtofilename",
    "addtofilenametextinbox",
    "addtofilenameifstringinbox",
    "addtofilenameafterstringinbox",
    "deletecharactersfromfilename",
    "filterfilename",
    "getfilenamesfromlistinfile",
    "includeall",
    "includeiftextispresent",
    "includeinasinglefragmentiftextispresent",
    "includeiftextcontainedinbox",
    "includeiftextchangeafterstring",
    "excludeiftextispresent",
    "excludeiftextcontainedinbox",
    "excludeiftextchangeafterstring",
    "excludeifnotextcontainted",
    "extractfilename",
    "extracttext",
    "extracttextselectedwords",
    "extracttextskipwords",
    "extracttextskipthisword",
    "extracttextskipcharacters",
    "extractonlyifthistextinrect",
    "extractonlyifthistextnotinrect",
    "extracttextlineafterstring",
    "extracttextlineafterstringinrect",
    "fillinfodictentry",
};

int CActionUtils::SplitComGetCommandIndex(QString command)
{
    return gCommandsList.indexOf(command.toLower());
}

QString CActionUtils::SplitComGetCommandString(int index)
{
    return gCommandsList.value(index, QStringLiteral("INVALID_INDEX"));
}
