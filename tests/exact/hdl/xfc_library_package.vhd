-- Stub library functions: names, generics and ports as the generated instances use them, no behaviour, every
-- output tied to '0'. Operand and result are unpacked into sign, exponent and mantissa; bb of the ldexp
-- functions is the 32-bit scale in both precisions.

library ieee;
use ieee.std_logic_1164.all;
use work.xfc_package.all;

package xfc_library_package is

  -- single precision functions

  component fp_sqr
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(8 downto 1);
          mantissain : in std_logic_vector(23 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(8 downto 1);
          mantissaout : out std_logic_vector(23 downto 1));
  end component;

  component fp_invsqr
    generic (synthesize : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(8 downto 1);
          mantissain : in std_logic_vector(23 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(8 downto 1);
          mantissaout : out std_logic_vector(23 downto 1));
  end component;

  component fp_inv
    generic (synthesize : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(8 downto 1);
          mantissain : in std_logic_vector(23 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(8 downto 1);
          mantissaout : out std_logic_vector(23 downto 1));
  end component;

  component fp_exp
    generic (synthesize : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(8 downto 1);
          mantissain : in std_logic_vector(23 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(8 downto 1);
          mantissaout : out std_logic_vector(23 downto 1));
  end component;

  component fp_log
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(8 downto 1);
          mantissain : in std_logic_vector(23 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(8 downto 1);
          mantissaout : out std_logic_vector(23 downto 1));
  end component;

  component fp_ldexp
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(8 downto 1);
          mantissain : in std_logic_vector(23 downto 1);
          bb : in std_logic_vector(32 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(8 downto 1);
          mantissaout : out std_logic_vector(23 downto 1));
  end component;

  component fp_fabs
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(8 downto 1);
          mantissain : in std_logic_vector(23 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(8 downto 1);
          mantissaout : out std_logic_vector(23 downto 1));
  end component;

  component fp_neg
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(8 downto 1);
          mantissain : in std_logic_vector(23 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(8 downto 1);
          mantissaout : out std_logic_vector(23 downto 1));
  end component;

  -- double precision functions

  component dp_sqr
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(11 downto 1);
          mantissain : in std_logic_vector(52 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(11 downto 1);
          mantissaout : out std_logic_vector(52 downto 1));
  end component;

  component dp_invsqr
    generic (doubleaccuracy, doublespeed : xfc_switch; device : xfc_device; synthesize : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(11 downto 1);
          mantissain : in std_logic_vector(52 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(11 downto 1);
          mantissaout : out std_logic_vector(52 downto 1));
  end component;

  component dp_inv
    generic (roundconvert, doubleaccuracy, doublespeed : xfc_switch; device : xfc_device;
             synthesize : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(11 downto 1);
          mantissain : in std_logic_vector(52 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(11 downto 1);
          mantissaout : out std_logic_vector(52 downto 1));
  end component;

  component dp_exp
    generic (roundconvert, doubleaccuracy, doublespeed : xfc_switch; device : xfc_device;
             synthesize : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(11 downto 1);
          mantissain : in std_logic_vector(52 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(11 downto 1);
          mantissaout : out std_logic_vector(52 downto 1));
  end component;

  component dp_log
    generic (device : xfc_device; doublespeed, synthesize : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(11 downto 1);
          mantissain : in std_logic_vector(52 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(11 downto 1);
          mantissaout : out std_logic_vector(52 downto 1));
  end component;

  component dp_ldexp
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(11 downto 1);
          mantissain : in std_logic_vector(52 downto 1);
          bb : in std_logic_vector(32 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(11 downto 1);
          mantissaout : out std_logic_vector(52 downto 1));
  end component;

  component dp_fabs
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(11 downto 1);
          mantissain : in std_logic_vector(52 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(11 downto 1);
          mantissaout : out std_logic_vector(52 downto 1));
  end component;

  component dp_neg
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(11 downto 1);
          mantissain : in std_logic_vector(52 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(11 downto 1);
          mantissaout : out std_logic_vector(52 downto 1));
  end component;

end xfc_library_package;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity fp_sqr is
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(8 downto 1);
        mantissain : in std_logic_vector(23 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(8 downto 1);
        mantissaout : out std_logic_vector(23 downto 1));
end fp_sqr;
architecture stub of fp_sqr is begin
  signout <= '0'; exponentout <= (others => '0'); mantissaout <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity fp_invsqr is
  generic (synthesize : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(8 downto 1);
        mantissain : in std_logic_vector(23 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(8 downto 1);
        mantissaout : out std_logic_vector(23 downto 1));
end fp_invsqr;
architecture stub of fp_invsqr is begin
  signout <= '0'; exponentout <= (others => '0'); mantissaout <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity fp_inv is
  generic (synthesize : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(8 downto 1);
        mantissain : in std_logic_vector(23 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(8 downto 1);
        mantissaout : out std_logic_vector(23 downto 1));
end fp_inv;
architecture stub of fp_inv is begin
  signout <= '0'; exponentout <= (others => '0'); mantissaout <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity fp_exp is
  generic (synthesize : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(8 downto 1);
        mantissain : in std_logic_vector(23 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(8 downto 1);
        mantissaout : out std_logic_vector(23 downto 1));
end fp_exp;
architecture stub of fp_exp is begin
  signout <= '0'; exponentout <= (others => '0'); mantissaout <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity fp_log is
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(8 downto 1);
        mantissain : in std_logic_vector(23 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(8 downto 1);
        mantissaout : out std_logic_vector(23 downto 1));
end fp_log;
architecture stub of fp_log is begin
  signout <= '0'; exponentout <= (others => '0'); mantissaout <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity fp_ldexp is
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(8 downto 1);
        mantissain : in std_logic_vector(23 downto 1);
        bb : in std_logic_vector(32 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(8 downto 1);
        mantissaout : out std_logic_vector(23 downto 1));
end fp_ldexp;
architecture stub of fp_ldexp is begin
  signout <= '0'; exponentout <= (others => '0'); mantissaout <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity fp_fabs is
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(8 downto 1);
        mantissain : in std_logic_vector(23 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(8 downto 1);
        mantissaout : out std_logic_vector(23 downto 1));
end fp_fabs;
architecture stub of fp_fabs is begin
  signout <= '0'; exponentout <= (others => '0'); mantissaout <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity fp_neg is
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(8 downto 1);
        mantissain : in std_logic_vector(23 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(8 downto 1);
        mantissaout : out std_logic_vector(23 downto 1));
end fp_neg;
architecture stub of fp_neg is begin
  signout <= '0'; exponentout <= (others => '0'); mantissaout <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity dp_sqr is
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(11 downto 1);
        mantissain : in std_logic_vector(52 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(11 downto 1);
        mantissaout : out std_logic_vector(52 downto 1));
end dp_sqr;
architecture stub of dp_sqr is begin
  signout <= '0'; exponentout <= (others => '0'); mantissaout <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity dp_invsqr is
  generic (doubleaccuracy, doublespeed : xfc_switch; device : xfc_device; synthesize : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(11 downto 1);
        mantissain : in std_logic_vector(52 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(11 downto 1);
        mantissaout : out std_logic_vector(52 downto 1));
end dp_invsqr;
architecture stub of dp_invsqr is begin
  signout <= '0'; exponentout <= (others => '0'); mantissaout <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity dp_inv is
  generic (roundconvert, doubleaccuracy, doublespeed : xfc_switch; device : xfc_device; synthesize : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(11 downto 1);
        mantissain : in std_logic_vector(52 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(11 downto 1);
        mantissaout : out std_logic_vector(52 downto 1));
end dp_inv;
architecture stub of dp_inv is begin
  signout <= '0'; exponentout <= (others => '0'); mantissaout <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity dp_exp is
  generic (roundconvert, doubleaccuracy, doublespeed : xfc_switch; device : xfc_device; synthesize : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(11 downto 1);
        mantissain : in std_logic_vector(52 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(11 downto 1);
        mantissaout : out std_logic_vector(52 downto 1));
end dp_exp;
architecture stub of dp_exp is begin
  signout <= '0'; exponentout <= (others => '0'); mantissaout <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity dp_log is
  generic (device : xfc_device; doublespeed, synthesize : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(11 downto 1);
        mantissain : in std_logic_vector(52 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(11 downto 1);
        mantissaout : out std_logic_vector(52 downto 1));
end dp_log;
architecture stub of dp_log is begin
  signout <= '0'; exponentout <= (others => '0'); mantissaout <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity dp_ldexp is
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(11 downto 1);
        mantissain : in std_logic_vector(52 downto 1);
        bb : in std_logic_vector(32 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(11 downto 1);
        mantissaout : out std_logic_vector(52 downto 1));
end dp_ldexp;
architecture stub of dp_ldexp is begin
  signout <= '0'; exponentout <= (others => '0'); mantissaout <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity dp_fabs is
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(11 downto 1);
        mantissain : in std_logic_vector(52 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(11 downto 1);
        mantissaout : out std_logic_vector(52 downto 1));
end dp_fabs;
architecture stub of dp_fabs is begin
  signout <= '0'; exponentout <= (others => '0'); mantissaout <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity dp_neg is
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(11 downto 1);
        mantissain : in std_logic_vector(52 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(11 downto 1);
        mantissaout : out std_logic_vector(52 downto 1));
end dp_neg;
architecture stub of dp_neg is begin
  signout <= '0'; exponentout <= (others => '0'); mantissaout <= (others => '0');
end stub;
