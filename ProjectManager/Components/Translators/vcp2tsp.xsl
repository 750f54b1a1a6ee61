<?xml version="1.0" encoding="UTF-8"?>
<!-- Turns a Visual C++ project file (VisualStudioProject with Files, Filter and File elements) into
     a project of the editor: the project takes the name, each filter becomes a folder and each file
     a file item whose path is relative to the project file, as it was. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="xml" encoding="UTF-16" indent="yes"/>

  <xsl:template match="/">
    <xsl:if test="not(VisualStudioProject)">
      <xsl:message terminate="yes">Not a Visual C++ project file</xsl:message>
    </xsl:if>
    <xsl:apply-templates select="VisualStudioProject"/>
  </xsl:template>

  <xsl:template match="VisualStudioProject">
    <project name="{@Name}" version="1.1" type="Tessaroline Project" serverURL="" projectType="General">
      <xsl:apply-templates select="Files/Filter | Files/File"/>
    </project>
  </xsl:template>

  <xsl:template match="Filter">
    <folder name="{@Name}">
      <xsl:apply-templates select="Filter | File"/>
    </folder>
  </xsl:template>

  <xsl:template match="File">
    <xsl:variable name="path">
      <xsl:choose>
        <xsl:when test="starts-with(@RelativePath, '.\') or starts-with(@RelativePath, './')">
          <xsl:value-of select="substring(@RelativePath, 3)"/>
        </xsl:when>
        <xsl:otherwise>
          <xsl:value-of select="@RelativePath"/>
        </xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <file path="{$path}" hmode="" cp="">
      <xsl:attribute name="name">
        <xsl:call-template name="file-name">
          <xsl:with-param name="path" select="translate($path, '/', '\')"/>
        </xsl:call-template>
      </xsl:attribute>
    </file>
  </xsl:template>

  <!-- The last component of a path with "\" separators. -->
  <xsl:template name="file-name">
    <xsl:param name="path"/>
    <xsl:choose>
      <xsl:when test="contains($path, '\')">
        <xsl:call-template name="file-name">
          <xsl:with-param name="path" select="substring-after($path, '\')"/>
        </xsl:call-template>
      </xsl:when>
      <xsl:otherwise>
        <xsl:value-of select="$path"/>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>
</xsl:stylesheet>
