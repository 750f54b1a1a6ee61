<?xml version="1.0" encoding="UTF-8"?>
<!-- The HTML words at the end of the path keyName (steps divided by worddiv) whose type is
     selectType. The path parameters are those of the named template, filled in as text. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="xml" encoding="UTF-8" omit-xml-declaration="yes"/>
  <xsl:template match="/root">
    <root>
      <xsl:copy-of select="*[not(self::element)]"/>
      <xsl:call-template name="element">
        <xsl:with-param name="node" select="."/>
      </xsl:call-template>
    </root>
  </xsl:template>
  <xsl:template name="element"><xsl:param name="keyName" select="'a.target.'"/><xsl:param name="keyType" select="'tag.attr.'"/><xsl:param name="selectType" select="'value'"/><xsl:param name="worddiv" select="'.'"/><xsl:param name="node"/>
    <xsl:choose>
      <xsl:when test="$keyName = ''">
        <xsl:for-each select="$node/element[$selectType = '' or @type = $selectType]">
          <element name="{@name}" type="{@type}" iconIndex="{@iconIndex}" description="{@description}"/>
        </xsl:for-each>
      </xsl:when>
      <xsl:otherwise>
        <xsl:call-template name="element">
          <xsl:with-param name="keyName" select="substring-after($keyName, $worddiv)"/>
          <xsl:with-param name="keyType" select="substring-after($keyType, $worddiv)"/>
          <xsl:with-param name="selectType" select="$selectType"/>
          <xsl:with-param name="node" select="$node/element[translate(@name, 'ABCDEFGHIJKLMNOPQRSTUVWXYZ', 'abcdefghijklmnopqrstuvwxyz') = substring-before($keyName, $worddiv) and @type = substring-before($keyType, $worddiv)]"/>
        </xsl:call-template>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>
</xsl:stylesheet>
