#pragma once
// Numbers of the wizard's dialogs and controls, shared by the templates and the code. They are macros
// because the resource compiler knows nothing else.

#define IDD_WIZARD 200
#define IDD_FIRST_PAGE 210  // the pages have the numbers from here on, in the order of WizardPage

#define IDC_SIDE_IMAGE 1000
#define IDC_LINE 1001
#define IDC_BACK 1002
#define IDC_NEXT 1003
#define IDC_FINISH 1004
#define IDC_HELP_BUTTON 1005

#define IDC_HEADING 1010  // the main instruction of a page

#define IDC_DISKS 1021
#define IDC_STATUS 1022

#define IDC_NDIS 1031
#define IDC_SELECT_NDIS 1032
#define IDC_NDIS_NOTE 1033
#define IDC_ASPI 1034
#define IDC_SELECT_ASPI 1035

#define IDC_OWNER 1041
#define IDC_ORGANIZATION 1042
#define IDC_PC_NAME 1043
#define IDC_WORKGROUP 1044
#define IDC_OS_TYPE 1045
#define IDC_KEY_PART_1 1046
#define IDC_KEY_PART_2 1047
#define IDC_KEY_PART_3 1048
#define IDC_KEY_PART_4 1049
#define IDC_KEY_PART_5 1050

#define IDC_FILES 1061
#define IDC_SPACE_OF_FILES 1062

#define IDC_IMAGE_14 1071
#define IDC_IMAGE_28 1072
#define IDC_FLOPPY 1073
#define IDC_TARGET 1074
#define IDC_BROWSE 1075
#define IDC_SPACE_AT_TARGET 1076

#define IDC_OUTCOME 1081
#define IDC_HOME_PAGE 1082
#define IDC_FRAMEWORK_SITE 1083

#define IDC_PROGRESS 1091
#define IDC_STEP_1 1092
#define IDC_STEP_2 1093
#define IDC_STEP_3 1094
#define IDC_STEP_4 1095
#define IDC_MARK_1 1096
#define IDC_MARK_2 1097
#define IDC_MARK_3 1098
#define IDC_MARK_4 1099
