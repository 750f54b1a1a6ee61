<%@ page contentType="text/html; charset=UTF-8" import="java.util.*" %>
<%@ taglib prefix="c" uri="http://java.sun.com/jsp/jstl/core" %>
<%-- The user list;
     kept short. --%>
<%! private int count = 0; %>
<html>
<body>
<jsp:include page="header.jsp" />
<%
  List<String> names = (List<String>) request.getAttribute("names");
  for (String name : names) { /* one row each */
    count++;
%>
  <p class="user"><%= name %></p>
<% } %>
<c:forEach var="u" items="${users}"><c:out value="${u.name}"/></c:forEach>
</body>
</html>
