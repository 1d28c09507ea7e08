/* a /* b */ c */ SELECT -- x
 'it''s' "q""", [br]]acket] /**/ , N'zażółć' , 'con\
tinued'