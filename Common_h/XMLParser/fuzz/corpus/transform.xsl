<?xml version="1.0" encoding="UTF-8"?>
<!-- The PHP words of the select type, all of them for an empty one; the settings as they stand. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="xml" encoding="UTF-8" omit-xml-declaration="yes"/>
  <xsl:param name="keyName" select="''"/>
  <xsl:param name="keyType" select="''"/>
  <xsl:param name="selectType" select="''"/>
  <xsl:param name="isRoot" select="''"/>
  <xsl:template match="/root">
    <root>
      <xsl:copy-of select="*[not(self::element)]"/>
      <xsl:for-each select="element[$selectType = '' or @type = $selectType]">
        <element name="{@name}" type="{@type}" iconIndex="{@iconIndex}" description="{@description}" info="{@info}"/>
      </xsl:for-each>
    </root>
  </xsl:template>
</xsl:stylesheet>
