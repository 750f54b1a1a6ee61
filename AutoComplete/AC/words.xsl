<?xml version="1.0" encoding="UTF-8"?>
<!-- Selects the words that apply at the cursor from a word file of nested "element" nodes.
     keyName and keyType hold the path to the cursor, each step closed by ".", such as "input.type."
     and "tag.attr."; the words are the children at the end of that path whose type is selectType
     (all of them when selectType is empty). An "element" named "*" holds what every sibling of its
     type has as well (the global attributes of HTML); a "valueset" holds values shared by the
     words whose "valueset" attribute names it. The settings of the word file are copied as they
     stand. The parameters are filled in by the configurator as text. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="xml" encoding="UTF-8" omit-xml-declaration="yes"/>

  <xsl:param name="keyName" select="''"/>
  <xsl:param name="keyType" select="''"/>
  <xsl:param name="selectType" select="''"/>
  <xsl:param name="isRoot" select="''"/>

  <xsl:variable name="caseSensitive" select="translate(/root/register/@use, 'TRUE', 'true') = 'true'"/>
  <xsl:variable name="upper" select="'ABCDEFGHIJKLMNOPQRSTUVWXYZ'"/>
  <xsl:variable name="lower" select="'abcdefghijklmnopqrstuvwxyz'"/>

  <xsl:template match="/root">
    <root>
      <xsl:copy-of select="register | imagelist | Completechars | CompleteFirstchars | TTTriggerChars"/>
      <xsl:choose>
        <xsl:when test="$isRoot = 'true' or $keyName = ''">
          <xsl:call-template name="words">
            <xsl:with-param name="level" select="."/>
          </xsl:call-template>
        </xsl:when>
        <xsl:otherwise>
          <xsl:call-template name="step">
            <xsl:with-param name="level" select="."/>
            <xsl:with-param name="names" select="$keyName"/>
            <xsl:with-param name="types" select="$keyType"/>
          </xsl:call-template>
        </xsl:otherwise>
      </xsl:choose>
    </root>
  </xsl:template>

  <!-- Goes down one step of the path: to the child of that name and type, or failing that to the
       child of the "*" entry beside the level. -->
  <xsl:template name="step">
    <xsl:param name="level"/>
    <xsl:param name="names"/>
    <xsl:param name="types"/>
    <xsl:choose>
      <xsl:when test="not(contains($names, '.'))">
        <xsl:call-template name="words">
          <xsl:with-param name="level" select="$level"/>
        </xsl:call-template>
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

  <!-- The words under level: its own children, those of the "*" entry of its type, and those of
       its value set, each as one empty "element" with the word's attributes. -->
  <xsl:template name="words">
    <xsl:param name="level"/>
    <xsl:for-each select="$level/element[@name != '*'] |
        $level/../element[@name = '*' and @type = $level/@type]/element |
        /root/valueset[@name = $level/@valueset]/element">
      <xsl:if test="$selectType = '' or @type = $selectType">
        <element>
          <xsl:copy-of select="@name | @type | @iconIndex | @description | @info"/>
        </element>
      </xsl:if>
    </xsl:for-each>
  </xsl:template>
</xsl:stylesheet>
