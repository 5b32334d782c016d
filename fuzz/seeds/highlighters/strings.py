x = '''TODO
y = "a\\"
z = 'abc
"""doc\"""" 
