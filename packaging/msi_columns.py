"""What each column of the package's tables may hold, which the package tells in its table
_Validation."""

import re

# A line for each table. A column has a name and, behind "=", a category of texts, or the smallest
# and the largest number, or the texts that it may hold in braces; "?" stands behind a column that
# may be empty, and behind ">" the tables whose keys it may hold.
_COLUMNS = """
_Validation Table=Identifier Column=Identifier Nullable={Y;N} MinValue=-2147483647..2147483647?
  MaxValue=-2147483647..2147483647? KeyTable=Text? KeyColumn=1..32? Category=Text? Set=Text?
  Description=Text?
AdminExecuteSequence Action=Identifier Condition=Condition? Sequence=-4..32767?
AdminUISequence Action=Identifier Condition=Condition? Sequence=-4..32767?
AdvtExecuteSequence Action=Identifier Condition=Condition? Sequence=-4..32767?
AppSearch Property=Identifier Signature_=Identifier>Signature;RegLocator
Binary Name=Identifier Data=Binary
Component Component=Identifier ComponentId=Guid? Directory_=Identifier>Directory Attributes=0..32767
  Condition=Condition? KeyPath=Identifier?>File;Registry
CreateFolder Directory_=Identifier>Directory Component_=Identifier>Component
CustomAction Action=Identifier Type=1..32767 Source=CustomSource? Target=Formatted?
  ExtendedType=0..2147483647?
Directory Directory=Identifier Directory_Parent=Identifier?>Directory DefaultDir=DefaultDir
Environment Environment=Identifier Name=Text Value=Formatted? Component_=Identifier>Component
Error Error=0..32767 Message=Template?
Feature Feature=Identifier Feature_Parent=Identifier?>Feature Title=Text? Description=Text?
  Display=0..32767? Level=0..32767 Directory_=UpperCase?>Directory Attributes=0..63
FeatureComponents Feature_=Identifier>Feature Component_=Identifier>Component
File File=Identifier Component_=Identifier>Component FileName=Filename FileSize=0..2147483647
  Version=Version? Language=Language? Attributes=0..32767? Sequence=1..32767
Icon Name=Identifier Data=Binary
InstallExecuteSequence Action=Identifier Condition=Condition? Sequence=-4..32767?
InstallUISequence Action=Identifier Condition=Condition? Sequence=-4..32767?
LaunchCondition Condition=Condition Description=Formatted
Media DiskId=1..32767 LastSequence=0..32767 DiskPrompt=Text? Cabinet=Cabinet? VolumeLabel=Text?
  Source=Property?
MsiFileHash File_=Identifier>File Options=0..32767 HashPart1=-2147483647..2147483647
  HashPart2=-2147483647..2147483647 HashPart3=-2147483647..2147483647
  HashPart4=-2147483647..2147483647
Property Property=Identifier Value=Text
RegLocator Signature_=Identifier Root=0..3 Key=RegPath Name=Formatted? Type=0..18?
Registry Registry=Identifier Root=-1..3 Key=RegPath Name=Formatted? Value=Formatted?
  Component_=Identifier>Component
RemoveFile FileKey=Identifier Component_=Identifier>Component FileName=WildCardFilename?
  DirProperty=Identifier InstallMode={1;2;3}
ServiceControl ServiceControl=Identifier Name=Formatted Event=0..187 Arguments=Formatted? Wait=0..1?
  Component_=Identifier>Component
ServiceInstall ServiceInstall=Identifier Name=Formatted DisplayName=Formatted?
  ServiceType=-2147483647..2147483647 StartType=0..4 ErrorControl=-2147483647..2147483647
  LoadOrderGroup=Formatted? Dependencies=Formatted? StartName=Formatted? Password=Formatted?
  Arguments=Formatted? Component_=Identifier>Component Description=Text?
Shortcut Shortcut=Identifier Directory_=Identifier>Directory Name=Filename
  Component_=Identifier>Component Target=Shortcut Arguments=Formatted? Description=Text?
  Hotkey=0..32767? Icon_=Identifier?>Icon IconIndex=-32767..32767? ShowCmd={1;3;7}?
  WkDir=Identifier? DisplayResourceDLL=Formatted? DisplayResourceId=0..32767?
  DescriptionResourceDLL=Formatted? DescriptionResourceId=0..32767?
Signature Signature=Identifier FileName=Text MinVersion=Text? MaxVersion=Text?
  MinSize=0..2147483647? MaxSize=0..2147483647? MinDate=0..2147483647? MaxDate=0..2147483647?
  Languages=Language?
Upgrade UpgradeCode=Guid VersionMin=Text? VersionMax=Text? Language=Language?
  Attributes=0..2147483647 Remove=Formatted? ActionProperty=UpperCase
"""

_COLUMN = re.compile(r"(?P<name>\w+)=(?:(?P<category>[A-Z]\w*)|(?P<low>-?\d+)\.\.(?P<high>\d+)|"
                     r"\{(?P<set>.*)\})(?P<empty>\?)?(?:>(?P<tables>.*))?")


def validation_rows():
    """The rows of the table _Validation."""
    return [(table, column["name"], "Y" if column["empty"] else "N", column["low"] or "",
             column["high"] or "", column["tables"] or "", "1" if column["tables"] else "",
             column["category"] or "", column["set"] or "", "")
            for line in re.sub(r"\n +", " ", _COLUMNS.strip()).splitlines()
            for table, *words in [line.split()]
            for column in map(_COLUMN.fullmatch, words)]
