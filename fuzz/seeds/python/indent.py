if a:
    x = 1
  y = 2
	z
class A(B):
    @staticmethod
    @classmethod
    def f(self): pass
