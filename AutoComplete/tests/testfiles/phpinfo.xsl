<?xml version="1.0" encoding="UTF-8"?>
<!-- The signature of the PHP function keyName, the current parameter in bold, then its description. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="xml" encoding="UTF-8" omit-xml-declaration="yes"/>
  <xsl:param name="keyName" select="''"/>
  <xsl:param name="keyType" select="''"/>
  <xsl:param name="selectType" select="''"/>
  <xsl:param name="isRoot" select="''"/>
  <xsl:param name="currParam" select="''"/>
  <xsl:template match="/root">
    <root>
      <xsl:copy-of select="*[not(self::element)]"/>
      <xsl:for-each select="element[@name = $keyName and @type = $keyType]">
        <info><xsl:value-of select="@name"/>(<xsl:for-each select="param"><xsl:if test="position() &gt; 1">, </xsl:if><xsl:choose><xsl:when test="string(position() - 1) = $currParam"><b><xsl:value-of select="."/></b></xsl:when><xsl:otherwise><xsl:value-of select="."/></xsl:otherwise></xsl:choose></xsl:for-each>)<br/><nbsp/><xsl:value-of select="@description"/></info>
      </xsl:for-each>
    </root>
  </xsl:template>
</xsl:stylesheet>
