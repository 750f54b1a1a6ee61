<%@ Language=VBScript %>
<%
Option Explicit
' Lists the open orders.
Dim oConn, oRs, sSql
Set oConn = Server.CreateObject("ADODB.Connection")
sSql = "SELECT * FROM Orders WHERE Status = ""open"""
Set oRs = oConn.Execute(sSql)
%>
<html>
<head><title>Orders</title></head>
<body>
<script language="VBScript">
Sub ShowInfo()
  MsgBox "Order " & document.all.nr.value
End Sub
</script>
<table>
<% Do While Not oRs.EOF %>
  <tr><td><%= oRs("Id") %></td><td onclick="ShowInfo()"><%= Server.HTMLEncode(oRs("Name")) %></td></tr>
<%   oRs.MoveNext
   Loop %>
</table>
</body>
</html>
