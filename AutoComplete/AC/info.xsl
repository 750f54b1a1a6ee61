<?xml version="1.0" encoding="UTF-8"?>
<!-- The information text of one word, for the tip: a function's signature with the current
     parameter in bold and its description, or the word's description. keyName and keyType hold the
     path to the word, steps divided by "."; currParam counts the parameters from 0. The result is
     HTML in an "info" element; "<br/>" stands for a line break. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="xml" encoding="UTF-8" omit-xml-declaration="yes"/>

  <xsl:param name="keyName" select="''"/>
  <xsl:param name="keyType" select="''"/>
  <xsl:param name="selectType" select="''"/>
  <xsl:param name="isRoot" select="''"/>
  <xsl:param name="currParam" select="''"/>

  <xsl:variable name="caseSensitive" select="translate(/root/register/@use, 'TRUE', 'true') = 'true'"/>
  <xsl:variable name="upper" select="'ABCDEFGHIJKLMNOPQRSTUVWXYZ'"/>
  <xsl:variable name="lower" select="'abcdefghijklmnopqrstuvwxyz'"/>

  <xsl:template match="/root">
    <root>
      <!-- The settings go along, so that reading them from this text changes nothing. -->
      <xsl:copy-of select="register | imagelist | Completechars | CompleteFirstchars | TTTriggerChars"/>
      <xsl:if test="$keyName != ''">
        <xsl:call-template name="step">
          <xsl:with-param name="level" select="."/>
          <xsl:with-param name="names" select="concat($keyName, '.')"/>
          <xsl:with-param name="types" select="concat($keyType, '.')"/>
        </xsl:call-template>
      </xsl:if>
    </root>
  </xsl:template>

  <!-- Goes down the path as the word list does; at its end writes the information. -->
  <xsl:template name="step">
    <xsl:param name="level"/>
    <xsl:param name="names"/>
    <xsl:param name="types"/>
    <xsl:choose>
      <xsl:when test="not(contains($names, '.'))">
        <xsl:apply-templates select="$level[1]" mode="info"/>
      </xsl:when>
      <xsl:otherwise>
        <xsl:variable name="name" select="substring-before($names, '.')"/>
        <xsl:variable name="type" select="substring-before($types, '.')"/>
        <xsl:variable name="own" select="$level/element[(@name = $name or (not($caseSensitive) and
            translate(@name, $upper, $lower) = $name)) and ($type = '' or @type = $type)]"/>
        <xsl:variable name="shared" select="$level/../element[@name = '*' and @type = $level/@type]/element[
            (@name = $name or (not($caseSensitive) and translate(@name, $upper, $lower) = $name)) and
            ($type = '' or @type = $type)]"/>
        <xsl:if test="$own or $shared">
          <xsl:call-template name="step">
            <xsl:with-param name="level" select="$own | $shared[not($own)]"/>
            <xsl:with-param name="names" select="substring-after($names, '.')"/>
            <xsl:with-param name="types" select="substring-after($types, '.')"/>
          </xsl:call-template>
        </xsl:if>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- A word with parameters: name(parameters): return type, the current parameter in bold. -->
  <xsl:template match="element[param]" mode="info">
    <info>
      <xsl:value-of select="@name"/>
      <xsl:text>(</xsl:text>
      <xsl:for-each select="param">
        <xsl:if test="position() &gt; 1">, </xsl:if>
        <xsl:choose>
          <xsl:when test="string(position() - 1) = $currParam"><b><xsl:value-of select="."/></b></xsl:when>
          <xsl:otherwise><xsl:value-of select="."/></xsl:otherwise>
        </xsl:choose>
      </xsl:for-each>
      <xsl:text>)</xsl:text>
      <xsl:if test="@return != ''">: <xsl:value-of select="@return"/></xsl:if>
      <xsl:if test="@info != ''"><br/><xsl:value-of select="@info"/></xsl:if>
    </info>
  </xsl:template>

  <!-- Any other word: its description and its information, one to a line. -->
  <xsl:template match="element" mode="info">
    <info>
      <b><xsl:value-of select="@name"/></b>
      <xsl:if test="@description != ''"><br/><xsl:value-of select="@description"/></xsl:if>
      <xsl:if test="@info != ''"><br/><xsl:value-of select="@info"/></xsl:if>
    </info>
  </xsl:template>
</xsl:stylesheet>
